#include "compare/ui/compare_bar.h"

#include <initializer_list>

#include <QLayout>

#include "common/ui/cards.h"
#include "common/ui/style_sheet.h"
#include "compare/ui/command_buttons.h"

namespace zorvane {
namespace {

constexpr const char* kLayoutIds[] = {"view.both", "view.result", "view.editors"};
constexpr const char* kLayoutIcons[] = {"layout-both", "layout-result", "layout-editors"};

}  // namespace

CompareBar::CompareBar(CommandSet& commands, UiText text, QWidget* parent)
    : ToolBar(text("Compare Files"), parent), text_(std::move(text)) {
    const auto icon = [&](const char* id, const char* drawing) {
        auto* button = MakeCommandIcon(commands, id, drawing, this);
        Add(button);
        return button;
    };
    const auto word = [&](const char* id, const char* caption, ButtonLook look,
                          const char* drawing) {
        auto* button = MakeCommandButton(commands, id, text_(caption), look, drawing, this);
        Add(button);
        return button;
    };
    compare_ = word("compare.run", "Compare", ButtonLook::Primary, "refresh");
    AddSeparator();
    first_ = icon("go.first", "first");
    icon("go.previous", "previous");
    list_ = new DifferenceBox(text_("List of differences"), this);
    list_->setMinimumWidth(120);
    Add(list_, 1);
    icon("go.next", "next");
    last_ = icon("go.last", "last");
    place_ = new QLabel(this);
    place_->setProperty(look::kProperty, QString::fromLatin1(look::kBeside));
    Add(place_);
    AddSeparator();
    view_ = word("view.all_in_one", "View All In One", ButtonLook::Flat, "all-in-one");
    abort_ = word("compare.abort", "Abort", ButtonLook::Plain, "abort");
    abort_->hide();
    layouts_ = new SegmentedGroup(text_("Layout"), this);
    for (int at = 0; at < 3; ++at) {
        const QAction* action = commands.Action(kLayoutIds[at]);
        layouts_->Add(at + 1, QString(), QString::fromLatin1(kLayoutIcons[at]),
                      WithoutMnemonic(action->text()));
        QAbstractButton* segment = layouts_->Segment(at + 1);
        const auto tell = [segment, action] {
            segment->setProperty("caption", WithoutMnemonic(action->text()));
            segment->setToolTip(action->toolTip());
            segment->setAccessibleDescription(action->statusTip());
        };
        tell();
        connect(action, &QAction::changed, segment, tell);
    }
    connect(layouts_, &SegmentedGroup::Chosen, this,
            [&commands](int id) { commands.Run(kLayoutIds[id - 1]); });
    Add(layouts_);
    AddSeparator();
    find_ = icon("edit.find", "find");
    report_ = icon("report.make", "report");
    print_ = icon("file.print", "print");
    options_ = word("view.options", "Options", ButtonLook::Flat, "options");
    icon("view.panel", "panel");
}

void CompareBar::SetPlace(int current, int count) {
    if (count == 0)
        place_->clear();
    else if (current < 1)
        place_->setText(QString::number(count));
    else
        place_->setText(text_("%1 of %2").arg(current).arg(count));
}

void CompareBar::SetAbortVisible(bool visible) {
    // One place for both, so that nothing beside it jumps.
    abort_->setMinimumWidth(visible ? view_->width() : 0);
    abort_->setVisible(visible);
    view_->setVisible(!visible);
}

void CompareBar::SetViewCaption(const QString& caption) {
    view_->SetCaption(caption);
}

void CompareBar::FitTo(const FoldPlan& plan, int width) {
    compare_->SetCaptionShown(true);
    view_->SetCaptionShown(plan.captions);
    options_->SetCaptionShown(plan.captions);
    print_->setVisible(plan.captions);
    place_->setVisible(plan.place);
    const auto show = [](std::initializer_list<QWidget*> widgets, bool shown) {
        for (QWidget* widget : widgets)
            widget->setVisible(shown);
    };
    show({first_, last_, layouts_}, plan.steps_and_layouts);
    show({find_, report_}, true);
    if (!Fits(width))
        show({first_, last_, layouts_}, false);
    if (!Fits(width))
        show({find_, report_}, false);
    if (!Fits(width))
        compare_->SetCaptionShown(false);
}

// Below this a layout squeezes its buttons and cuts their captions off.
bool CompareBar::Fits(int width) {
    layout()->invalidate();
    return layout()->minimumSize().width() <= width;
}

}  // namespace zorvane
