#include "compare/viewer_saving.h"

#include <algorithm>
#include <array>

#include "common/file_utilities.h"
#include "common/log_message.h"
#include "common/platform/files.h"
#include "common/platform/native_path.h"
#include "common/process_state.h"
#include "compare/document/rtf_writer.h"
#include "load/text_preparation.h"
#include "load/word_conversion.h"

namespace zorvane {
namespace {

constexpr std::size_t kShownExtensions = 3;  // in the name of the filter for text
constexpr const char* kTextExtension = "txt";

struct TypeRow {
    SaveType type;
    const char* extension;  // nullptr: the first of the user's text extensions
    WordFormat format;
};
constexpr std::array<TypeRow, 4> kTypes = {{
    {SaveType::RichText, "rtf", WordFormat::RichText},
    {SaveType::Text, nullptr, WordFormat::PlainText},
    {SaveType::Document, "doc", WordFormat::Document},
    {SaveType::Html, "htm", WordFormat::Html},
}};

const TypeRow& RowOf(SaveType type) {
    return kTypes[static_cast<std::size_t>(type) - 1];
}

std::string Patterns(const std::vector<std::string>& extensions, std::size_t most) {
    std::string patterns;
    for (std::size_t i = 0; i < std::min(most, extensions.size()); ++i)
        patterns += (i == 0 ? "*." : ";*.") + extensions[i];
    return patterns;
}

// A file of that name keeps the ends that it has; a new one gets those of this system.
bool HasWindowsEnds(const std::string& file) {
    constexpr std::size_t kHead = 64UL * 1024;
    const Result<std::string> head = ReadFileHead(file, kHead);
    return head.ok() && head.value().find("\r\n") != std::string::npos;
}

class Saving {
  public:
    Saving(const SavingParts& parts, EditorTarget target) : parts_(parts), target_(target) {}

    SaveOutcome Run() {
        if (!AskForName())
            return {};
        // Another process of this program may save by the same temporary name.
        const ScopedNamedMutex lock(*parts_.process.platform.mutexes, "rtbTemp");
        temp_ = TempName();
        TellProgress(parts_.watcher, RunStep::Save, 0);
        if (!KeepGoing(parts_.watcher) || !ProduceRichText() || !KeepGoing(parts_.watcher) ||
            !Write())
            return {KeepGoing(parts_.watcher) ? SaveEnd::Failed : SaveEnd::Stopped, {}};
        if (IsSide(target_)) {
            const Side side = SideOf(target_);
            parts_.select_file(side, file_);
            parts_.window.RefreshFileList(side);
        }
        parts_.window.RefreshCaption();
        return {SaveEnd::Saved, file_};
    }

  private:
    std::string Translate(const char* english) { return parts_.process.Translate(english); }

    bool AskForName() {
        FileQuestion question;
        question.title =
            Translate("Save") + " " + EditorTitle(target_) + " " + Translate("Editor As");
        question.filter = SaveFilter(parts_.process, parts_.TextFileExtensions.Items());
        question.filter_index = parts_.settings.lLastSelectedFileFilterIndex;
        question.saving = true;
        question.start = parts_.suggested;
        file_ = parts_.window.PickFile(question);
        if (file_.empty())
            return false;
        parts_.settings.lLastSelectedFileFilterIndex = question.filter_index;
        type_ = static_cast<SaveType>(
            std::clamp<std::int32_t>(question.filter_index, 1, kTypes.size()));
        file_ = WithExtension(file_, type_, parts_.TextFileExtensions.Items());
        return !bFileExists(file_) || MayReplace();
    }

    bool MayReplace() {
        WindowQuestion question;
        question.text =
            file_ + "\r\n\r\n" + Translate("This file already exists. Do you want to replace it?");
        question.title = Translate("Save");
        question.icon = MessageIcon::Warning;
        question.answers = {Translate("Replace"), Translate("Cancel")};
        question.first = question.safe = 1;
        return parts_.window.Choose(question) == 0;
    }

    std::string TempName() {
        const std::string& folder = parts_.process.gsDataFolder;
        MakeDirectoryTree(folder);
        return JoinPath(folder, "rtbTemp.RTF");
    }

    bool ProduceRichText() {
        if (target_ == EditorTarget::AllInOneDiff)
            return parts_.create_all_in_one(temp_) == ReportResult::Ok;
        constexpr std::uint32_t kOwnerAlone = 0600;  // it stays there
        return Told(ReplaceFile(temp_, WriteRtf(parts_.editor(target_).Rich(), parts_.watcher),
                                kOwnerAlone, parts_.watcher));
    }

    bool Told(const Status& status) {
        if (!status.ok() && KeepGoing(parts_.watcher))
            LogMessage(parts_.telling, status.failure().reason);
        return status.ok();
    }

    bool Write() {
        if (type_ == SaveType::RichText)
            return Told(CopyFileReplacingReadOnly(temp_, file_, parts_.mode, parts_.watcher));
        WordConversion word{parts_.process, parts_.telling, parts_.page, {}};
        if (!word.CheckVersion())
            return false;
        // Beside nothing of the user's, so that a conversion that fails leaves his file alone.
        const Result<std::string> converted =
            parts_.process.platform.temp_files->NewName("save", ExtensionFor());
        if (!converted.ok())
            return Told(converted.failure());
        word.TakePasswords({});
        const WordResult result =
            parts_.page.OpenWordSaveAs(temp_, converted.value(), RowOf(type_).format);
        parts_.page.HideWordIfVisible();
        const bool goes_on = KeepGoing(parts_.watcher);
        if (goes_on)
            word.ReportTrellisPageError(result, file_);
        const bool written = goes_on && result == WordResult::Ok && Told(Take(converted.value()));
        DeleteFileWithRetry(*parts_.process.platform.clock, converted.value());
        return written;
    }

    Status Take(const std::string& converted) {
        if (type_ == SaveType::Text && !HasWindowsEnds(file_)) {
            Result<std::string> text = ReadWholeFile(converted);
            if (!text.ok())
                return text.failure();
            ReplaceStringFromText(text.value(), "\r\n", "\n");
            if (Status status = WriteWholeFile(converted, text.value()); !status.ok())
                return status;
        }
        return CopyFileReplacingReadOnly(converted, file_, parts_.mode, parts_.watcher);
    }

    std::string ExtensionFor() const {
        const char* extension = RowOf(type_).extension;
        return extension == nullptr ? kTextExtension : extension;
    }

    const SavingParts& parts_;
    EditorTarget target_;
    SaveType type_ = SaveType::RichText;
    std::string file_;
    std::string temp_;
};

std::string Both(std::string_view original, std::string_view modified) {
    return std::string(original).append(" vs. ").append(modified);
}

/// A file's name; a dot in front is no ending.
std::string_view WithoutEnding(std::string_view path) {
    const std::string_view name = FileNameOf(path);
    const std::size_t dot = name.rfind('.');
    return dot == 0 ? name : name.substr(0, dot);
}

}  // namespace

std::string EditorTitle(EditorTarget target) {
    switch (target) {
        case EditorTarget::AllInOneDiff:
            return "ALL IN ONE DIFF";
        case EditorTarget::OriginalDiffFinal:
            return "ORIGINAL DIFF";
        case EditorTarget::ModifiedDiffFinal:
            return "MODIFIED DIFF";
        case EditorTarget::Original:
            return "ORIGINAL";
        case EditorTarget::Modified:
            break;
    }
    return "MODIFIED";
}

std::string TitleOf(EditorTarget target, const PerSide<std::string>& files) {
    if (target == EditorTarget::Original && !files.original.empty())
        return files.original;
    if (target == EditorTarget::Modified && !files.modified.empty())
        return files.modified;
    if (IsSide(target) || files.original.empty() || files.modified.empty())
        return EditorTitle(target);
    return Both(FileNameOf(files.original), FileNameOf(files.modified));
}

std::string SuggestedName(EditorTarget target, const PerSide<std::string>& files) {
    const bool modified =
        target == EditorTarget::Modified || target == EditorTarget::ModifiedDiffFinal;
    const std::string& own = modified ? files.modified : files.original;
    if (own.empty())
        return {};
    const bool one = IsSide(target) || files.original.empty() || files.modified.empty();
    const std::string name =
        one ? std::string(WithoutEnding(own))
            : Both(WithoutEnding(files.original), WithoutEnding(files.modified));
    return NativePath(JoinPath(ParentOf(own), name));
}

std::string SaveFilter(ProcessState& process, const std::vector<std::string>& extensions) {
    const std::vector<std::string> own =
        extensions.empty() ? std::vector<std::string>{kTextExtension} : extensions;
    return process.Translate("Rich Text Format") + "(*.RTF)|*.RTF|" + process.Translate("Text") +
           " (" + Patterns(own, kShownExtensions) + " etc)|" + Patterns(own, own.size()) +
           "|MS Word (*.doc)|*.doc|HTML (*.htm;*.html)|*.htm;*.html";
}

std::string WithExtension(const std::string& file, SaveType type,
                          const std::vector<std::string>& extensions) {
    if (!ExtensionOf(file).empty())
        return file;
    const char* extension = RowOf(type).extension;
    const std::string text = extensions.empty() ? kTextExtension : extensions.front();
    return file + (file.ends_with('.') ? "" : ".") + (extension == nullptr ? text : extension);
}

SaveOutcome SaveEditorAs(const SavingParts& parts, EditorTarget target) {
    return Saving(parts, target).Run();
}

}  // namespace zorvane
