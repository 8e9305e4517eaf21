#include "find/ui/find_option_pages.h"

#include <QHBoxLayout>

#include "common/ui/bars.h"
#include "common/ui/check_boxes.h"
#include "common/ui/dialog.h"
#include "common/ui/path_field.h"

namespace zorvane {

FindOptionsPage::FindOptionsPage(frmFindTextInFiles& viewer, const UiText& text, QWidget* parent)
    : QWidget(parent) {
    QHBoxLayout* columns = MakeOptionColumns(this);
    auto* column = new FormColumn(this);
    column->AddHeading(text("While working"));
    const auto add = [&](const char* words, bool FindSettings::*value) {
        auto* box = new WrappingCheckBox(text(words), column);
        column->AddWidget(box);
        binding_.Check(
            box, [&viewer, value] { return viewer.Settings().*value; },
            [&viewer, value](bool on) { viewer.Settings().*value = on; });
    };
    add("Show Rows When All Are There", &FindSettings::cbDontStreamResults);
    add("Beep When Done", &FindSettings::cbBeepWhenDone);
    columns->addWidget(column, 1, Qt::AlignTop);
    ShowValues();
}

FindReportPage::FindReportPage(frmFindTextInFiles& viewer, const UiText& text, QWidget* parent)
    : QWidget(parent) {
    QHBoxLayout* columns = MakeOptionColumns(this);
    auto* column = new FormColumn(this);
    column->AddHeading(text("The report of all hits"));
    auto* file = new PathField(text("Pick Find Text Report File"), column);
    column->AddAbove(text("File, a row for each hit with tabs between"), file);
    binding_.Path(
        &file->Line(), [&viewer] { return viewer.Settings().txtDefaultReportCSV; },
        [&viewer](const std::string& path) { viewer.Settings().txtDefaultReportCSV = path; });
    connect(&file->Browse(), &QToolButton::clicked, this, [this, &viewer] {
        viewer.ChooseReportFile();
        ShowValues();
    });
    columns->addWidget(column, 1, Qt::AlignTop);
    ShowValues();
}

}  // namespace zorvane
