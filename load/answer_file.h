// The file that a child writes its answer to. It has no name that a child could know, and a child
// is never asked for one.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "common/base/result.h"
#include "common/platform/file_descriptor.h"
#include "load/conversion_answer.h"

namespace zorvane {

class AnswerFile {
  public:
    AnswerFile() = default;
    /// Empty and without a name, in `folder`; it goes with its last descriptor.
    static Result<AnswerFile> Make(const std::string& folder);

    bool IsOpen() const { return file_.IsOpen(); }
    int Descriptor() const { return file_.Get(); }
    std::uint64_t Size() const;
    /// Writes a part to a new file; an old one goes first.
    Status CopyTo(const AnswerPart& part, const std::string& target) const;
    /// A part that fits the memory; empty for an empty one.
    Result<std::string> Read(const AnswerPart& part) const;
    Status Fill(std::string_view bytes);
    /// The file as something to read.
    FileDescriptor TakeDescriptor() && { return std::move(file_); }

  private:
    FileDescriptor file_;
};

/// Opens a document that a child is to read. A pipe or a device is read to its end first, into a
/// file in `folder`, so that a child has nothing to wait for.
Result<FileDescriptor> OpenDocument(const std::string& path, const std::string& folder);

}  // namespace zorvane
