#include "load/trellis_page.h"

#include <optional>

#include "common/base/text_encoding.h"
#include "common/file_utilities.h"
#include "common/platform/files.h"
#include "compare/document/clipboard.h"
#include "compare/document/rtf_reader.h"
#include "load/file_types.h"

namespace zorvane {
namespace {

// RTF and text are ours and safe to read here; the rest is for the other program.
bool IsReadHere(std::string_view bytes, const std::string& sFile) {
    const Signature signature = SignatureOf(bytes);
    if (signature == Signature::RichText)
        return true;
    const FileType* type = TypeNamed(sFile);
    const bool rendered = type != nullptr && type->form != TextForm::None;
    return !rendered && (signature == Signature::Text || signature == Signature::Utf16Text);
}

// False for what is no regular file: of a pipe nothing may be read in advance.
bool IsForeign(const std::string& sFile) {
    const Result<std::string> head = ReadFileHead(sFile, kSignatureReach);
    return head.ok() && !IsReadHere(head.value(), sFile);
}

// The items' paragraphs as lines of the plain text: a line inside a paragraph counts there.
void NumberByLines(std::u16string_view text, std::vector<BesideItem>& beside) {
    constexpr char16_t kLineInParagraph = 11;
    std::vector<std::int32_t> first_lines = {1};
    std::int32_t line = 1;
    for (const char16_t unit : text) {
        if (unit == kLineInParagraph || unit == u'\n')
            ++line;
        if (unit == u'\n')
            first_lines.push_back(line);
    }
    for (BesideItem& item : beside) {
        if (item.paragraph > 0 && item.paragraph <= std::ssize(first_lines))
            item.paragraph = first_lines[static_cast<std::size_t>(item.paragraph - 1)];
    }
}

std::string PlainOfRtf(std::string_view bytes, std::vector<BesideItem>& beside) {
    const std::u16string text = ReadRtf(bytes, beside).text;
    NumberByLines(text, beside);
    return ToUtf8(PlainTextOf(text));
}

// Rich text holds what lies beside it; of plain text it is given back.
std::string TextIn(std::string bytes, WordFormat format, const std::string& locale,
                   std::vector<BesideItem>& beside) {
    if (LooksLikeRtf(bytes))
        return format == WordFormat::RichText ? std::move(bytes) : PlainOfRtf(bytes, beside);
    return ToUtf8(DecodeText(bytes, DetectEncoding(bytes, locale)));
}

}  // namespace

// Whoever may write may read as well, so any of the passwords opens.
std::string NativeTrellisPage::Password() const {
    for (const std::string* password :
         {&InputFile_PassWord, &InputFile_PassWord_TW, &InputFileTemplate_PassWord}) {
        if (!password->empty())
            return *password;
    }
    return InputFileTemplate_PassWord_TW;
}

ConversionResult NativeTrellisPage::Convert(const std::string& sFile, const std::string& sTarget,
                                            WordFormat lFormat) {
    const bool readable = lFormat == WordFormat::PlainText || lFormat == WordFormat::RichText;
    if (!readable || IsForeign(sFile))
        return service_.Run(Job(sFile, sTarget, lFormat), observer_);
    Result<std::string> bytes = ReadWholeFile(sFile);
    if (!bytes.ok())
        return FailedConversion(ReadError::CannotOpen, bytes.failure().reason);
    if (!IsReadHere(bytes.value(), sFile))
        return service_.Run(Job(sFile, sTarget, lFormat), observer_);
    std::vector<BesideItem> beside;
    const Status written = WriteWholeFile(
        sTarget,
        TextIn(std::move(bytes).value(), lFormat, platform_.locale->EncodingName(), beside));
    if (!written.ok())
        return FailedConversion(ReadError::CannotWrite, written.failure().reason);
    service_.AddBeside(EncodeBesideList(beside));
    return {};
}

ConversionMessage NativeTrellisPage::Job(const std::string& sFile, const std::string& sTarget,
                                         WordFormat lFormat) const {
    return {{"kind", "word"},
            {"source", sFile},
            {"target", sTarget},
            {"format", std::to_string(static_cast<std::int32_t>(lFormat))},
            {"password", Password()}};
}

void NativeTrellisPage::Expect(const std::string& sFile, WordFormat lFormat) {
    if (IsForeign(sFile))
        service_.Expect(Job(sFile, {}, lFormat));
}

// An office suite writes the document from rich text, whatever the source is.
ConversionResult NativeTrellisPage::SaveAsDocument(const std::string& sFile,
                                                   const std::string& sTarget) {
    const Result<std::string> rich = platform_.temp_files->NewName("save", "rtf");
    if (!rich.ok())
        return FailedConversion(ReadError::CannotWrite, rich.failure().reason);
    ConversionResult result = Convert(sFile, rich.value(), WordFormat::RichText);
    if (result.ok())
        result = service_.ConvertByOffice(rich.value(), {}, sTarget, "doc", observer_);
    DeleteFileWithRetry(*platform_.clock, rich.value());
    return result;
}

WordResult NativeTrellisPage::OpenWordSaveAs(const std::string& sFile, const std::string& sTarget,
                                             WordFormat lFormat) {
    error_.clear();
    if (sFile.empty() || sTarget.empty()) {
        error_ = "the name of the source or of the target is empty";
        return WordResult::PathEmpty;
    }
    const ConversionResult result = lFormat == WordFormat::Document
                                        ? SaveAsDocument(sFile, sTarget)
                                        : Convert(sFile, sTarget, lFormat);
    error_ = service_.Explain(result, sFile);
    return CodesOf(result.error).page;
}

}  // namespace zorvane
