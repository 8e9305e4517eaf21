// Commands of a window: each stands in one table, and menus, bars and the palette come from it.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <QAction>
#include <QMenuBar>
#include <QObject>
#include <QString>

#include "common/ui/ui_text.h"

namespace zorvane {

enum class CommandKind : std::uint8_t {
    Push,
    Check,  ///< on or off
    Choice  ///< one of those that stand under the same heading in the same group
};

/// Where the keys of a command hold.
enum class KeyScope : std::uint8_t {
    Window,
    Program,  ///< also while a window that belongs to it is in front, unless it is modal
    Focus     ///< while a widget that was given the action has the focus
};

/// One command. Texts are English, as the translator wants them.
struct Command {
    std::string_view id;    ///< "compare.run"; never shown
    std::string_view text;  ///< with its mnemonic: "&Compare"
    std::string_view menu;  ///< "&File", or "&File|&New" for a menu in a menu
    int group = 0;          ///< a line stands between groups of a menu
    std::string_view keys;  ///< "F3", several with "; " between; the first is the one shown
    std::string_view icon;  ///< by its name, or empty
    std::string_view tip;   ///< one sentence, told on hovering and to screen readers
    CommandKind kind = CommandKind::Push;
    KeyScope scope = KeyScope::Window;
};

/// What a command is called in a window where it means a little more than its table says.
struct CommandWords {
    std::string_view text{};  ///< empty: as in the table
    std::string_view tip{};   ///< likewise
    friend bool operator==(const CommandWords&, const CommandWords&) = default;
};

/// What a window adds to a command of the table.
struct CommandBinding {
    std::function<void()> run{};
    /// Empty: it can be run now. Else the reason why not, in English.
    std::function<std::string_view()> why_not{};
    /// For Check and Choice: is it on?
    std::function<bool()> is_on{};
    CommandWords words{};
};

/// A command for lists.
struct CommandEntry {
    std::string_view id;
    QString name{};  ///< without mnemonic and dots
    QString menu{};
    QString keys{};
    QString icon{};
    QString reason{};  ///< empty: it can be run
};

/// The commands of one window as actions. A command without a binding is greyed.
class CommandSet : public QObject {
    Q_OBJECT
  public:
    /// Tables live as long as the program; `text` translates.
    CommandSet(const std::vector<std::span<const Command>>& tables, UiText text, QWidget& window);

    void Bind(std::string_view id, CommandBinding binding);
    /// The same while `applies`, in place of what is bound so far: windows of several kinds share a
    /// command.
    void BindWhere(const std::function<bool()>& applies, std::string_view id,
                   const CommandBinding& binding);
    /// All texts once more, in the language of now.
    void Retranslate();
    /// Asks all bindings anew; menus do it by themselves before they open.
    void Refresh();
    /// Runs the command if it can be run; false otherwise.
    bool Run(std::string_view id);

    /// Null for an unknown id. Owned by this set.
    QAction* Action(std::string_view id) const;
    /// These menus in this order, each with the groups of all tables in theirs.
    void FillMenuBar(QMenuBar& bar, std::span<const std::string_view> menus);
    QMenu* Menu(std::string_view path) const;
    /// All commands in the tables' order.
    std::vector<CommandEntry> Entries() const;

  private:
    struct Item {
        const Command* command = nullptr;
        QAction* action = nullptr;
        CommandBinding binding{};
        std::function<CommandWords()> words{};  ///< empty: those of the binding
        CommandWords shown{};
    };

    void Add(const Command& command);
    void ShowWords(const Item& item) const;
    static CommandWords WordsOf(const Item& item) {
        return item.words ? item.words() : item.binding.words;
    }
    void RefreshItem(Item& item);
    QMenu* MenuAt(QMenuBar& bar, std::string_view path);
    static std::string_view WhyNot(const CommandBinding& binding);

    UiText text_;
    QWidget& window_;
    std::vector<Item> items_;
    std::map<std::string_view, std::size_t> by_id_;
    std::map<std::string, QMenu*, std::less<>> menus_;
};

/// "Ctrl+Shift+F" in the words of the system; several are parted by "; " in `keys`.
QList<QKeySequence> KeysOf(std::string_view keys);
/// What a tool tip says: the name, the key in brackets, and the sentence below.
QString ToolTipOf(const QString& name, const QString& keys, const QString& tip);

}  // namespace zorvane
