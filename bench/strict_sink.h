// What every reader of documents owes to its sink and its monitor; a fault ends the fuzzer.
#pragma once

#include <cstdlib>
#include <string>
#include <string_view>

#include "common/base/text_encoding.h"
#include "load/readers/reader.h"
#include "load/readers/sink/document_sink.h"

namespace zorvane {

inline void Demand(bool held) {
    if (!held)
        std::abort();
}

class StrictSink : public DocumentSink {
  public:
    void BeginParagraph(const ParagraphFormat& /*format*/) override {
        Demand(!open_);
        open_ = true;
    }
    void Text(std::string_view utf8, const CharFormat& format) override {
        Demand(open_ && IsValidUtf8(utf8) && utf8.find_first_of("\r\n") == std::string_view::npos);
        Demand(format.half_points >= 1 && format.half_points <= 3276);
        size_ += utf8.size();
    }
    void ListLabel(std::string_view utf8, const CharFormat& format) override { Text(utf8, format); }
    void EndParagraph() override {
        Demand(open_);
        open_ = false;
        size_ += 2;
    }
    std::size_t Size() const override { return size_; }
    std::string Finish() override {
        Demand(!open_);
        return {};
    }

  private:
    bool open_ = false;
    std::size_t size_ = 0;
};

class Patient : public ReadMonitor {
  public:
    bool Progress(std::int64_t done, std::int64_t total) override {
        Demand(done < total);
        return true;
    }
};

}  // namespace zorvane
