// What a job brings: its answer, and the answer file that it fills part after part.
#pragma once

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "compare/document/beside.h"
#include "load/conversion_message.h"
#include "load/readers/reader.h"
#include "load/readers/request_channel.h"

namespace zorvane {

class JobOutput {
  public:
    /// `file` is borrowed, open and empty.
    explicit JobOutput(int file) : file_(file) {}

    /// Writes the next part and notes its place in the answer, as "part1", "part2", ...
    ReadEnd Add(std::string_view bytes) { return Write("part" + std::to_string(++count_), bytes); }
    /// Behind the last part: what lies beside the text. An answer's value would hold too little.
    ReadEnd AddBeside(const std::vector<BesideItem>& items) {
        return items.empty() ? ReadEnd::Ok() : Write("beside", EncodeBesideList(items));
    }

    ConversionMessage answer;

  private:
    ReadEnd Write(const std::string& name, std::string_view bytes) {
        if (!WriteBytes(file_, bytes))
            return ReadEnd::Fault(ReadError::CannotWrite, std::strerror(errno));
        answer[name] = std::to_string(size_) + " " + std::to_string(bytes.size());
        size_ += bytes.size();
        return ReadEnd::Ok();
    }

    int file_;
    std::uint64_t size_ = 0;
    std::size_t count_ = 0;
};

}  // namespace zorvane
