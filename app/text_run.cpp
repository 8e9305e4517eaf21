#include "app/text_run.h"

#include <algorithm>
#include <chrono>

#include "app/exit_status.h"
#include "app/input_file.h"
#include "app/terminal_window.h"
#include "common/base/text_encoding.h"
#include "common/base/visible_text.h"
#include "common/log_message.h"
#include "common/platform/files.h"
#include "common/platform/terminal.h"
#include "common/process_state.h"
#include "common/text_privacy.h"
#include "compare/document/memory_editor.h"
#include "compare/document/rtf_writer.h"
#include "compare/run/run_control.h"
#include "compare/viewer_window.h"
#include "load/document_loader.h"
#include "load/document_text.h"

namespace zorvane {
namespace {

class TextRunner {
  public:
    TextRunner(Platform& platform, const TextCommand& command)
        : command_(command), process_(platform) {}

    int Run() {
        process_.telling.manner.sLogFile = command_.load.log_file;
        process_.bWithoutSandbox = command_.load.no_sandbox;
        Status step = BeginCommand(process_, command_.load.settings_file);
        if (step.ok())
            step = Load();
        if (step.ok() && loaded_)
            step = Write();
        if (!step.ok())
            LogMessage(process_, step.failure().reason);
        return step.ok() && loaded_ ? 0 : kTrouble;
    }

  private:
    Status Load() {
        Result<std::string> file = InputFile(process_, command_.file);
        if (!file.ok())
            return file.failure();
        mode_ = ModeForTextOf(process_.telling, {file.value(), {}});
        clsCompareFileOptions options;
        options.sSectionName = kFirstViewer;
        IgnoreFailure(options.LoadStateFromFile(*process_.settings),
                      "an option that cannot be read keeps its default");
        CompareFilesSettings settings = DefaultCompareFilesSettings(process_.gsDataFolder);
        ReadCompareFilesSettings(*process_.settings, kFirstViewer, settings);
        if (Status applied = ApplyLoadOptions(command_.load, SetBy::Text, options, settings);
            !applied.ok())
            return applied;
        TerminalWindow window(IsTerminal(Stream::Error));
        PerSide<clsMRU> recent_files;
        clsMRU extensions;
        extensions.Setup(kTextExtensions, *process_.settings,
                         std::string(kFirstViewer) + "TextFileExtensions", "txt,log,csv");
        clsRTBDocument document;
        document.Setup(editor_, *process_.platform.sound);
        RunControl control;
        control.CallWhileRunning(
            [&] { window.ShowStatus(StatusPanel::Detail, control.Texts(process_).detail); },
            kProgress);
        DocumentLoader loader(
            {process_,
             process_.telling,
             options,
             settings,
             window,
             recent_files,
             extensions,
             [&document](EditorTarget) -> clsRTBDocument& { return document; },
             [&window](const std::string& text) { window.ShowStatus(StatusPanel::Detail, text); },
             {},
             &control});
        loaded_ = loader.LoadFileIntoEditor(file.value(), EditorTarget::Original) &&
                  !loader.Memory().bSlidesFailed.original;
        // The output is right as it is, but whoever reads it may wonder.
        if (loaded_ && !loader.Memory().sNoText.original.empty())
            LogMessage(process_, loader.Memory().sNoText.original);
        return Status::Ok();
    }

    Status Write() {
        const std::string text =
            command_.rtf ? WriteRtf(editor_.Rich()) : PlainLines(editor_.Text());
        if (!command_.output.empty())
            return ReplaceFile(command_.output, text, mode_);
        const bool shown = IsTerminal(Stream::Output);
        return WriteStream(Stream::Output, shown ? VisibleText(text, LineBreaks::Kept) : text);
    }

    static constexpr std::int32_t kTextExtensions = 15;
    static constexpr std::chrono::milliseconds kProgress{100};

    const TextCommand& command_;
    ProcessState process_;
    MemoryEditor editor_;
    std::uint32_t mode_ = 0;  // of the output
    bool loaded_ = false;
};

}  // namespace

int RunTextCommand(Platform& platform, const TextCommand& command) {
    return TextRunner(platform, command).Run();
}

}  // namespace zorvane
