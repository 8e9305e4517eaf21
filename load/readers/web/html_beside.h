// What a page holds beside its text.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "load/readers/sink/document_sink.h"
#include "load/readers/web/html_parser.h"

namespace zorvane {

/// Digest of the file that a page refers to; empty when it is not at hand.
using HtmlFileDigest = std::function<std::string(std::string_view address)>;

class HtmlBeside {
  public:
    HtmlBeside(DocumentSink& sink, HtmlFileDigest digest_of)
        : sink_(sink), digest_of_(std::move(digest_of)) {}

    /// An element that begins; `hidden` when it or one around it is not shown.
    void Open(const HtmlElement& element, bool hidden);
    /// Text that is not shown, and the end of such text.
    void Hidden(std::string_view utf8);
    void EndHidden();

  private:
    void Special(const HtmlElement& element);
    void Link(const HtmlElement& element);
    void Picture(const HtmlElement& element, std::string_view address);
    void Embedded(const HtmlElement& element, std::string_view address);
    void Meta(const HtmlElement& element);
    void Formula(const HtmlElement& element);
    std::string Value(const HtmlElement& element, std::string_view name);

    DocumentSink& sink_;
    HtmlFileDigest digest_of_;
    HtmlReferences references_;
    std::string hidden_;
    std::size_t look_ahead_left_ = std::size_t{1} << 23;
};

}  // namespace zorvane
