#include "find/engine/orben_x.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "common/base/text_encoding.h"
#include "common/expression_faults.h"
#include "common/file_utilities.h"
#include "common/platform/files.h"
#include "common/platform/native_path.h"

namespace zorvane {
namespace {

// A cell of a table with tabs between holds neither tab nor line end.
std::string Cell(std::string_view text) {
    std::string cell(text);
    for (char& character : cell) {
        if (character == '\t' || character == '\n' || character == '\r')
            character = ' ';
    }
    return cell;
}

}  // namespace

OrbenX::OrbenX() = default;

OrbenX::~OrbenX() {
    Release();
}

std::int32_t OrbenX::HitCount() const {
    return static_cast<std::int32_t>(hits_.size());
}

bool OrbenX::Refuse(FindError error, const std::string& message) {
    Tell(static_cast<std::int32_t>(error), message);
    if (events_ != nullptr)
        events_->OnSearchCompleted();
    return false;
}

void OrbenX::StartSearch() {
    run_.Clear();
    hits_.Clear();
    files_.Clear();
    texts_.Clear();
    if (events_ != nullptr)
        events_->OnSearchStarted();
    FindRules rules;
    rules.text = text_;
    rules.syntax = expression_ ? FindSyntax::Simple : FindSyntax::Literal;
    rules.word = whole_word_ ? WordRule::Blanks : WordRule::Any;
    rules.match_case = match_case_;
    rules_ = rules;
    Result<std::unique_ptr<LineFinder>> finder = LineFinder::Make(rules);
    if (!finder.ok()) {
        Refuse(FindError::SearchString, ExpressionFault(finder.failure().reason, translate_));
        return;
    }
    if (Trim(folder_).empty() || !bDirectoryExists(folder_)) {
        Refuse(FindError::Folder, folder_ + ": " + translate_("there is no such folder"));
        return;
    }
    if (Trim(types_).empty()) {
        Refuse(FindError::FileType, translate_("No type of files is given"));
        return;
    }
    finder_ = std::move(finder).value();
    FindRunOptions options;
    options.folder = folder_;
    options.file_types = types_;
    options.subfolders = subfolders_;
    options.documents = office_ ? documents_ : nullptr;
    options.threads = threads_;
    options.behind_windows = true;
    const SystemError error = run_.Start(*finder_, options, *this, [this] {
        if (events_ != nullptr)
            events_->OnSearchCompleted();
    });
    if (error)
        Refuse(FindError::Folder, folder_ + ": " + error.Words());
}

void OrbenX::Take(FoundFile&& file, std::string&& /*rendered*/) {
    if (!file.reason.empty())
        Tell(file.code, file.path + ": " +
                            (file.fault == FileFault::None
                                 ? file.reason
                                 : WordsOf(file.fault, file.fault_line, translate_)));
    if (file.lines.empty())
        return;
    constexpr auto kMost = static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max());
    files_.Append(texts_.Add(file.path));
    for (const FoundLine& line : file.lines) {
        if (hits_.size() == kMost)
            return;
        Hit hit;
        hit.file = static_cast<std::int32_t>(files_.size()) - 1;
        hit.line = static_cast<std::int32_t>(std::min<std::int64_t>(line.line, kMost));
        hit.column = line.column;
        hit.item = texts_.Add(file.Item(line));
        hit.place =
            file.place ? texts_.Add(file.place(line.line, line.column)) : std::string_view();
        hits_.Append(hit);
    }
}

void OrbenX::Tell(std::int32_t code, const std::string& message) {
    if (events_ != nullptr)
        events_->OnSearchError(code, message);
}

bool OrbenX::GetHit(std::int32_t index, std::string& sFile, std::int32_t& lLine, std::int32_t& lCol,
                    std::string& sItem) const {
    if (index < 0 || index >= HitCount())
        return false;
    const Hit& hit = hits_[static_cast<std::size_t>(index)];
    sFile = files_[static_cast<std::size_t>(hit.file)];
    lLine = hit.line;
    lCol = hit.column;
    sItem = hit.item;
    return true;
}

std::string OrbenX::PlaceOf(std::int32_t index) const {
    return index < 0 || index >= HitCount()
               ? std::string()
               : std::string(hits_[static_cast<std::size_t>(index)].place);
}

Status OrbenX::WriteReport(const std::string& sFile, const WritingWatch& watch) const {
    Result<FileReplacement> report = FileReplacement::Begin(sFile);
    if (!report.ok())
        return report.failure();
    constexpr std::size_t kPiece = 1 << 16;
    std::string text = "File\tLine\tCol\tItem Found\tPlace\r\n";
    const std::int32_t count = HitCount();
    for (std::int32_t index = 0; index < count; ++index) {
        const Hit& hit = hits_[static_cast<std::size_t>(index)];
        text += Cell(files_[static_cast<std::size_t>(hit.file)]) + '\t' + std::to_string(hit.line) +
                '\t' + std::to_string(hit.column) + '\t' + Cell(hit.item) + '\t' + Cell(hit.place) +
                "\r\n";
        if (text.size() < kPiece)
            continue;
        if (watch.stop())
            return Failure{"stopped"};
        watch.progress(static_cast<int>(std::int64_t{100} * index / count));
        if (Status written = report.value().Write(text); !written.ok())
            return written;
        text.clear();
    }
    if (Status written = report.value().Write(text); !written.ok())
        return written;
    return report.value().Finish();
}

bool OrbenX::ConvertOfficeDocToText(const std::string& sFile, const std::string& target,
                                    const std::function<bool()>& stop) {
    if (documents_ == nullptr || !documents_->IsDocument(FileNameOf(sFile)))
        return false;
    const DocumentTexts::Text text = documents_->TextOf(sFile, stop);
    return text.text && WriteWholeFile(target, *text.text).ok();
}

}  // namespace zorvane
