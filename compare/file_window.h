// What saving, printing and files on the disk ask of a viewer's window: verbs, never widgets.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "common/base/side.h"
#include "compare/print/page_painter.h"
#include "compare/print/page_setup.h"

namespace zorvane {

enum class MessageIcon { Information, Question, Warning, Error };

/// A question with its answers as buttons, from left to right.
struct WindowQuestion {
    std::string text;
    std::string title;
    MessageIcon icon = MessageIcon::Question;
    std::vector<std::string> answers;
    std::int32_t first = 0;  ///< what Enter presses
    std::int32_t safe = 0;   ///< what Esc presses, and what holds where nobody can be asked
};

/// `filter` is in pairs "name|patterns|name|patterns", patterns apart by ";". The window asks about
/// no file that exists; whoever saves does.
struct FileQuestion {
    std::string title;
    std::string filter;
    std::int32_t filter_index = 1;  ///< of the pairs, from 1; in and out
    bool saving = false;
    std::string start;  ///< a name or a folder to begin with; may be empty
};

enum class PrintRange { Whole, Selection };

struct PrintQuestion {
    std::string title;
    bool has_selection = false;
    PrintRange range = PrintRange::Whole;  ///< in and out
    /// The margins in and out, as the person may have changed them; the paper out.
    PageSetup page{};
};

class FileWindow {
  public:
    virtual ~FileWindow() = default;
    /// The number of the answer that was pressed.
    virtual std::int32_t Choose(const WindowQuestion& question) = 0;
    /// Empty when cancelled.
    virtual std::string PickFile(FileQuestion& question) = 0;
    /// The chosen printer, or a file to print to; nullptr when cancelled.
    virtual std::unique_ptr<PagePainter> PickPrinter(PrintQuestion& question) = 0;
    /// The printer that a program prints to when it is not told another; empty: none.
    virtual std::string DefaultPrinter() = 0;
    virtual void SetDefaultPrinter(const std::string& name) = 0;
    /// The margins on the options page are shown anew.
    virtual void RefreshMargins() = 0;
    /// The list of recent files of a side and what is selected in it.
    virtual void RefreshFileList(Side side) = 0;
    virtual void RefreshCaption() = 0;
};

}  // namespace zorvane
