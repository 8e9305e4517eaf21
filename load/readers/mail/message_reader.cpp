#include <algorithm>
#include <optional>
#include <utility>

#include "common/base/text_encoding.h"
#include "load/readers/mail/mime.h"
#include "load/readers/sink/symbol_fonts.h"
#include "load/readers/web/html_parser.h"
#include "load/readers/web/html_reader.h"
#include "load/readers/word_readers.h"

namespace zorvane {
namespace {

constexpr int kMostNested = 20;

struct MimeType {
    MimeValue type;
    MimeValue disposition;
    std::string name;

    explicit MimeType(const MimeEntity& entity)
        : type(ReadMimeValue(entity.Field("content-type"))),
          disposition(ReadMimeValue(entity.Field("content-disposition"))),
          name(disposition.Parameter("filename")) {
        if (type.value.empty())
            type.value = "text/plain";
        if (name.empty())
            name = type.Parameter("name");
    }
    bool IsText() const { return type.value == "text/plain" || type.value == "text/html"; }
    bool IsAttached() const {
        return disposition.value == "attachment" || (!name.empty() && !IsText());
    }
    bool IsMultipart() const { return type.value.starts_with("multipart/"); }
};

// The bytes of a message as a program saved it: in UTF-16 or UTF-32, or behind a byte-order mark.
// Nothing for one that stands as it was sent.
std::optional<std::string> Resaved(std::string_view bytes) {
    const DetectedEncoding encoding =
        DetectEncoding(bytes.substr(0, bytes.size() - bytes.size() % 2), {});
    const bool wide = encoding.name.starts_with("UTF-16") || encoding.name.starts_with("UTF-32");
    if (!wide && encoding.bom_size == 0)
        return std::nullopt;
    return ToUtf8(DecodeText(bytes, encoding));
}

bool IsEncoded(std::string_view transfer_encoding) {
    const std::string name = ToLower(Trim(transfer_encoding));
    return name == "base64" || name == "quoted-printable";
}

class MessageText {
  public:
    /// `resaved`: the message is UTF-8 now, whatever its parts say of themselves.
    MessageText(std::string_view locale_encoding, bool resaved, DocumentSink& sink,
                ReadMonitor& monitor)
        : locale_encoding_(locale_encoding),
          sink_(sink),
          writer_(sink),
          monitor_(monitor),
          resaved_(resaved) {
        bold_.bold = true;
    }

    ReadEnd Run(const MimeEntity& message) {
        ReadEnd end = Message(message, 0);
        if (end.ok())
            Attachments();
        return end;
    }

  private:
    ReadEnd Message(const MimeEntity& message, int depth) {
        using Field = std::pair<std::string_view, std::string_view>;
        constexpr Field kShown[] = {{"from", "From: "},
                                    {"to", "To: "},
                                    {"cc", "Cc: "},
                                    {"date", "Date: "},
                                    {"subject", "Subject: "}};
        for (const auto& [name, label] : kShown) {
            const std::string_view value = message.Field(name);
            if (value.empty())
                continue;
            std::string shown = DecodeField(value, locale_encoding_);
            std::replace(shown.begin(), shown.end(), '\t', ' ');  // where a field was folded
            writer_.Text(label, bold_);
            writer_.Text(CleanText(shown), CharFormat());
            writer_.End();
        }
        writer_.End();
        return Part(message, depth);
    }

    ReadEnd Part(const MimeEntity& entity, int depth) {
        if (depth >= kMostNested)
            return ReadEnd::Fault(ReadError::Damaged, "parts are nested too deeply");
        if (!monitor_.Progress(0, 1))
            return ReadEnd::Fault(ReadError::Cancelled);
        if (sink_.Size() > kMaxPartBytes)
            return ReadEnd::Fault(ReadError::TooLarge, "the message holds too much text");
        const MimeType type(entity);
        if (type.IsMultipart())
            return Multipart(entity, type, depth);
        if (type.IsAttached()) {
            attachments_.push_back(type.name.empty() ? type.type.value : type.name);
            ReportPart(BesideKind::Object, type, Content(entity));
            return ReadEnd::Ok();
        }
        const std::string_view encoding = entity.Field("content-transfer-encoding");
        const std::string bytes = DecodeBody(entity.body, encoding);
        const bool outer = std::exchange(resaved_, resaved_ && !IsEncoded(encoding));
        ReadEnd end = type.type.value == "message/rfc822" ? Message(ReadEntity(bytes), depth + 1)
                                                          : Body(bytes, type);
        resaved_ = outer;
        return end;
    }

    ReadEnd Body(const std::string& bytes, const MimeType& type) {
        const std::string_view charset = resaved_ ? "" : type.type.Parameter("charset");
        if (type.type.value == "text/html") {
            const std::string page = charset.empty() && !resaved_
                                         ? HtmlAsUtf8(bytes, locale_encoding_)
                                         : DecodeCharset(bytes, charset, locale_encoding_);
            return ShowHtml(page, HtmlSyntax::Html, sink_, monitor_);
        }
        if (type.type.value.starts_with("text/"))
            Plain(DecodeCharset(bytes, charset, locale_encoding_), type.type);
        else
            AttachOther(type, bytes);
        return ReadEnd::Ok();
    }

    void AttachOther(const MimeType& type, std::string_view bytes) {
        attachments_.push_back(type.type.value);
        ReportPart(BesideKind::Object, type, bytes);
    }

    // What the part holds is told by its digest alone.
    void ReportPart(BesideKind kind, const MimeType& type, std::string_view content) {
        const std::string name = type.name.empty() ? type.type.value : type.name;
        sink_.Beside(MakeBeside(kind, DecodeField(name, locale_encoding_), content));
    }

    static std::string Content(const MimeEntity& entity) {
        return DecodeBody(entity.body, entity.Field("content-transfer-encoding"));
    }

    ReadEnd Multipart(const MimeEntity& entity, const MimeType& type, int depth) {
        std::vector<MimeEntity> parts;
        bool whole = true;
        for (const std::string_view part :
             SplitParts(entity.body, type.type.Parameter("boundary"), &whole))
            parts.push_back(ReadEntity(part));
        if (!whole)
            sink_.Beside(
                {BesideKind::DamagedPart, 0, "end: the message is cut off", BesideDigest("end")});
        // Without the boundary that it names, the message is what stands there.
        if (parts.empty() && !Trim(entity.body).empty()) {
            Plain(DecodeCharset(entity.body, "", locale_encoding_), {});
            return ReadEnd::Ok();
        }
        if (type.type.value == "multipart/alternative") {
            const MimeEntity* best = Best(parts);
            return best == nullptr ? ReadEnd::Ok() : Part(*best, depth + 1);
        }
        const bool related = type.type.value == "multipart/related";
        for (std::size_t place = 0; place < parts.size(); ++place) {
            // What belongs to a page is its pictures.
            const bool picture =
                related && place > 0 &&
                (!MimeType(parts[place]).IsAttached() || !parts[place].Field("content-id").empty());
            if (picture) {
                ReportPart(BesideKind::Picture, MimeType(parts[place]), Content(parts[place]));
                continue;
            }
            if (ReadEnd end = Part(parts[place], depth + 1); !end.ok())
                return end;
        }
        return ReadEnd::Ok();
    }

    // The same text in several forms: the page, else what holds one, else plain text; of equal
    // ones the last.
    static const MimeEntity* Best(const std::vector<MimeEntity>& parts) {
        const MimeEntity* best = nullptr;
        int best_rank = -1;
        for (const MimeEntity& part : parts) {
            const int rank = RankOf(MimeType(part));
            if (rank >= best_rank)
                best = &part;
            best_rank = std::max(rank, best_rank);
        }
        return best;
    }

    static int RankOf(const MimeType& type) {
        if (type.type.value == "text/html")
            return 3;
        if (type.IsMultipart())
            return 2;
        return type.type.value == "text/plain" ? 1 : 0;
    }

    void Plain(std::string_view text, const MimeValue& type) {
        const bool flowed = EqualsLower(type.Parameter("format"), "flowed");
        const bool without_blank = EqualsLower(type.Parameter("delsp"), "yes");
        while (!text.empty()) {
            const std::size_t end = std::min(text.find('\n'), text.size());
            std::string_view line = text.substr(0, end);
            text.remove_prefix(std::min(end + 1, text.size()));
            if (line.ends_with('\r'))
                line.remove_suffix(1);
            const bool goes_on = flowed && line.ends_with(' ') && line != "-- " &&
                                 !line.starts_with('>') && !text.empty();
            if (flowed && line.starts_with(' '))
                line.remove_prefix(1);
            if (goes_on && without_blank)
                line.remove_suffix(1);
            writer_.Text(CleanText(line), CharFormat());
            if (!goes_on)
                writer_.End();
        }
        writer_.EndIfBegun();
    }

    void Attachments() {
        for (const std::string& name : attachments_) {
            writer_.Text("Attachment: ", bold_);
            writer_.Text(CleanText(DecodeField(name, locale_encoding_)), CharFormat());
            writer_.End();
        }
    }

    std::string_view locale_encoding_;
    DocumentSink& sink_;
    ParagraphWriter writer_;
    ReadMonitor& monitor_;
    CharFormat bold_;
    std::vector<std::string> attachments_;
    bool resaved_;
};

}  // namespace

ReadEnd ReadMessage(std::string_view bytes, std::string_view locale_encoding, DocumentSink& sink,
                    ReadMonitor& monitor) {
    if (bytes.size() > kMaxPartBytes)
        return ReadEnd::Fault(ReadError::TooLarge, "the file is larger than allowed");
    const std::optional<std::string> resaved = Resaved(bytes);
    if (resaved)
        bytes = *resaved;
    bytes.remove_prefix(std::min(bytes.find_first_not_of("\r\n"), bytes.size()));
    if (bytes.starts_with("From "))  // the line in front of a message in a mailbox
        bytes.remove_prefix(std::min(bytes.find('\n') + 1, bytes.size()));
    const MimeEntity message = ReadEntity(bytes);
    if (message.fields.empty())
        return ReadEnd::Fault(ReadError::WrongFormat, "the file does not begin as a message does");
    return MessageText(locale_encoding, resaved.has_value(), sink, monitor).Run(message);
}

}  // namespace zorvane
