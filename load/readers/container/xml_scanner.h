// Reads XML tag by tag from a part of a package, without a tree: for parts of many megabytes.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "load/readers/container/package.h"
#include "load/readers/reader.h"

namespace zorvane {

/// Views stay valid until the next call of Next. Comments, processing instructions and document
/// type declarations are passed over; entities of a document's own stay as they stand.
class XmlScanner {
  public:
    enum class Token { Start, End, Text, Done, Failed };

    /// The stream is borrowed.
    explicit XmlScanner(PartStream& stream);

    /// An empty element gives its start, with `SelfClosing` true, and no end. A stream that ends
    /// inside of an element gives Failed.
    Token Next();
    /// Hands each start, end and text to `take` until it gives false; then `why` tells how that
    /// ends the reading. Else the end of the stream or its fault does.
    template <class Take, class Why>
    ReadEnd ForTokens(Take&& take, Why&& why) {
        while (true) {
            const Token token = Next();
            if (token == Token::Failed)
                return Fault();
            if (token == Token::Done)
                return ReadEnd::Ok();
            if (!take(token))
                return why();
        }
    }
    /// The same for who takes all of it.
    template <class Take>
    ReadEnd ForAllTokens(Take&& take) {
        return ForTokens(
            [&](Token token) {
                take(token);
                return true;
            },
            ReadEnd::Ok);
    }
    /// Of a start or an end, without its prefix.
    std::string_view Name() const { return name_; }
    bool SelfClosing() const { return self_closing_; }
    /// Where the last tag or text began, in bytes from the stream's begin.
    std::uint64_t Offset() const { return offset_; }
    /// Raw value of an attribute by its local name; empty without one.
    std::string_view Attribute(std::string_view local_name) const;
    /// All attributes, for `NextAttribute`.
    std::string_view Attributes() const { return attributes_; }
    /// Raw text; entities are replaced by `AppendDecoded` unless it came from a CDATA section.
    std::string_view Text() const { return text_; }
    void AppendText(std::string& out) const;
    /// Why Next gave `Failed`.
    ReadEnd Fault() const;

  private:
    bool Fill();
    bool Find(std::string_view what, std::size_t from, std::size_t& at);
    bool FindTagEnd(std::size_t& at);
    Token PlainText();
    Token Markup();
    Token Cdata();
    Token Tag(std::size_t end);
    bool PassOver(std::string_view end);

    PartStream& stream_;
    std::string buffer_;
    std::size_t begin_ = 0;
    std::size_t end_ = 0;
    std::uint64_t consumed_ = 0;  ///< bytes that have left the buffer
    std::uint64_t offset_ = 0;
    std::string_view name_;
    std::string_view attributes_;
    std::string_view text_;
    std::int64_t open_ = 0;  ///< elements
    bool self_closing_ = false;
    bool raw_text_ = false;
    bool at_end_ = false;
    bool too_large_ = false;
};

struct XmlAttribute {
    std::string_view name;  ///< without its prefix; empty behind the last one
    std::string_view value;
};
/// Takes the next attribute off `rest`.
XmlAttribute NextAttribute(std::string_view& rest);

/// A part that is in memory already.
class MemoryStream : public PartStream {
  public:
    explicit MemoryStream(std::string_view bytes) : rest_(bytes) {}
    std::size_t Read(char* buffer, std::size_t size) override {
        size = rest_.copy(buffer, size);
        rest_.remove_prefix(size);
        return size;
    }
    ReadError Error() const override { return ReadError::None; }

  private:
    std::string_view rest_;
};

/// Replaces the five entities and numeric references; CR LF becomes LF.
void AppendDecoded(std::string_view raw, std::string& out);

}  // namespace zorvane
