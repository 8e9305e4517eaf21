#include "common/ui/command_table.h"

#include <algorithm>
#include <memory>

#include <QMenu>

#include "common/ui/icons.h"

namespace zorvane {

namespace {

// Names in lists have no dots: "Options..." and "Options" are the same thing to look for.
QString PlainName(const QString& text) {
    QString name = WithoutMnemonic(text);
    while (name.endsWith(u'.') || name.endsWith(QChar(0x2026)))
        name.chop(1);
    return name;
}

std::string_view LastPart(std::string_view path) {
    const std::size_t bar = path.rfind('|');
    return bar == std::string_view::npos ? path : path.substr(bar + 1);
}

}  // namespace

QList<QKeySequence> KeysOf(std::string_view keys) {
    // An empty text would be a list of one empty key.
    if (keys.empty())
        return {};
    return QKeySequence::listFromString(ToQt(keys), QKeySequence::PortableText);
}

QString ToolTipOf(const QString& name, const QString& keys, const QString& tip) {
    QString text = QStringLiteral("<b>%1</b>").arg(name.toHtmlEscaped());
    if (!keys.isEmpty())
        text += QStringLiteral("&nbsp;&nbsp;%1").arg(keys.toHtmlEscaped());
    if (!tip.isEmpty())
        text += QStringLiteral("<br>%1").arg(tip.toHtmlEscaped());
    return text;
}

CommandSet::CommandSet(const std::vector<std::span<const Command>>& tables, UiText text,
                       QWidget& window)
    : QObject(&window), text_(std::move(text)), window_(window) {
    for (const std::span<const Command> table : tables)
        for (const Command& command : table)
            Add(command);
    for (Item& item : items_)
        RefreshItem(item);
}

void CommandSet::Add(const Command& command) {
    auto* action = new QAction(this);
    action->setObjectName(ToQt(command.id));
    action->setShortcuts(KeysOf(command.keys));
    action->setCheckable(command.kind != CommandKind::Push);
    action->setMenuRole(QAction::NoRole);
    if (!command.icon.empty())
        action->setIcon(LookIcon(ToQt(command.icon)));
    connect(action, &QAction::triggered, this, [this, id = command.id] { Run(id); });
    // Keys work wherever the focus is in the window, menus open or not.
    if (command.scope == KeyScope::Program)
        action->setShortcutContext(Qt::ApplicationShortcut);
    if (command.scope == KeyScope::Focus)
        action->setShortcutContext(Qt::WidgetShortcut);
    else
        window_.addAction(action);
    by_id_[command.id] = items_.size();
    items_.push_back({.command = &command, .action = action});
    ShowWords(items_.back());
}

void CommandSet::ShowWords(const Item& item) const {
    QAction& action = *item.action;
    const QString keys = action.shortcut().toString(QKeySequence::NativeText);
    const auto chosen = [](std::string_view own, std::string_view usual) {
        return own.empty() ? usual : own;
    };
    const QString name = text_(chosen(item.shown.text, item.command->text));
    const QString tip = text_(chosen(item.shown.tip, item.command->tip));
    action.setToolTip(ToolTipOf(PlainName(name), keys, tip));
    action.setStatusTip(tip);
    action.setText(name);
}

void CommandSet::Retranslate() {
    for (const Item& item : items_)
        ShowWords(item);
    for (const auto& [path, menu] : menus_)
        menu->setTitle(text_(LastPart(path)));
}

void CommandSet::Bind(std::string_view id, CommandBinding binding) {
    const auto found = by_id_.find(id);
    Q_ASSERT(found != by_id_.end());
    Item& item = items_[found->second];
    item.binding = std::move(binding);
    item.words = {};
    RefreshItem(item);
}

void CommandSet::BindWhere(const std::function<bool()>& applies, std::string_view id,
                           const CommandBinding& binding) {
    const auto found = by_id_.find(id);
    Q_ASSERT(found != by_id_.end());
    const std::size_t at = found->second;
    const auto here = std::make_shared<const CommandBinding>(binding);
    const auto before = std::make_shared<const Item>(items_[at]);
    const auto current = [applies, here, before]() -> const CommandBinding& {
        return applies() ? *here : before->binding;
    };
    Bind(id, {.run =
                  [current] {
                      if (const auto& run = current().run)
                          run();
                  },
              .why_not = [current] { return WhyNot(current()); },
              .is_on =
                  [current] {
                      const auto& is_on = current().is_on;
                      return is_on && is_on();
                  }});
    items_[at].words = [applies, here, before] {
        return applies() ? here->words : WordsOf(*before);
    };
    RefreshItem(items_[at]);
}

std::string_view CommandSet::WhyNot(const CommandBinding& binding) {
    if (!binding.run)
        return "This window does not have it";
    return binding.why_not ? binding.why_not() : std::string_view();
}

void CommandSet::RefreshItem(Item& item) {
    item.action->setEnabled(WhyNot(item.binding).empty());
    if (item.binding.is_on)
        item.action->setChecked(item.binding.is_on());
    if (const CommandWords words = WordsOf(item); words != item.shown) {
        item.shown = words;
        ShowWords(item);
    }
}

void CommandSet::Refresh() {
    for (Item& item : items_)
        RefreshItem(item);
}

bool CommandSet::Run(std::string_view id) {
    const auto found = by_id_.find(id);
    if (found == by_id_.end() || !WhyNot(items_[found->second].binding).empty())
        return false;
    // What it does may bind commands anew.
    const std::function<void()> run = items_[found->second].binding.run;
    run();
    Refresh();
    return true;
}

QAction* CommandSet::Action(std::string_view id) const {
    const auto found = by_id_.find(id);
    return found == by_id_.end() ? nullptr : items_[found->second].action;
}

QMenu* CommandSet::Menu(std::string_view path) const {
    const auto found = menus_.find(path);
    return found == menus_.end() ? nullptr : found->second;
}

QMenu* CommandSet::MenuAt(QMenuBar& bar, std::string_view path) {
    if (QMenu* known = Menu(path))
        return known;
    const std::size_t cut = path.rfind('|');
    const QString title = text_(LastPart(path));
    QMenu* menu = cut == std::string_view::npos ? bar.addMenu(title)
                                                : MenuAt(bar, path.substr(0, cut))->addMenu(title);
    menu->setToolTipsVisible(true);
    connect(menu, &QMenu::aboutToShow, this, &CommandSet::Refresh);
    menus_.emplace(std::string(path), menu);
    return menu;
}

void CommandSet::FillMenuBar(QMenuBar& bar, std::span<const std::string_view> menus) {
    for (const std::string_view menu : menus)
        MenuAt(bar, menu);
    // By group, so that a second table can add to the first one's menus.
    std::vector<const Item*> order;
    for (const Item& item : items_)
        if (!item.command->menu.empty())
            order.push_back(&item);
    std::stable_sort(order.begin(), order.end(), [](const Item* one, const Item* other) {
        return one->command->group < other->command->group;
    });
    std::map<QMenu*, int> last_group;
    for (const Item* item : order) {
        QMenu* menu = MenuAt(bar, item->command->menu);
        const auto last = last_group.find(menu);
        if (last != last_group.end() && last->second != item->command->group)
            menu->addSeparator();
        menu->addAction(item->action);
        last_group[menu] = item->command->group;
    }
}

std::vector<CommandEntry> CommandSet::Entries() const {
    std::vector<CommandEntry> entries;
    entries.reserve(items_.size());
    for (const Item& item : items_) {
        const std::string_view reason = WhyNot(item.binding);
        const std::string_view top = item.command->menu.substr(0, item.command->menu.find('|'));
        entries.push_back({.id = item.command->id,
                           .name = PlainName(item.action->text()),
                           .menu = WithoutMnemonic(text_(top)),
                           .keys = item.action->shortcut().toString(QKeySequence::NativeText),
                           .icon = ToQt(item.command->icon),
                           .reason = reason.empty() ? QString() : text_(reason)});
    }
    return entries;
}

}  // namespace zorvane
