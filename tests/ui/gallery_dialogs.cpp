#include "tests/ui/gallery_dialogs.h"

#include <QLineEdit>

#include "common/ui/check_boxes.h"
#include "common/ui/combo_boxes.h"
#include "common/ui/measures.h"

namespace zorvane {

using namespace measures;

std::unique_ptr<Dialog> MakeFormDialog(bool german) {
    auto dialog = std::make_unique<Dialog>(QStringLiteral("Report Options"), kFormDialog, nullptr);
    FormColumn* column = dialog->AddColumn();
    auto* path = new QLineEdit(QStringLiteral("~/Documents/Tessera/ZorvaneReport.HTM"));
    column->AddAbove(Words(german, "Default Report Path and Name:",
                           "Ordner und Name, unter denen Berichte abgelegt werden:"),
                     path);
    column->AddAbove(
        Words(german, "Report Title (Blank for no title)", "Titel des Berichts (leer: kein Titel)"),
        new QLineEdit(QStringLiteral("Services Agreement, drafts 3 and 4")));
    auto* source = new QLineEdit;
    source->setPlaceholderText(QStringLiteral("Services Agreement, draft 3.docx"));
    column->AddAbove(QStringLiteral("Original Column Title"), source);
    column->AddHint(
        QStringLiteral("Hint: Leave blank to use the file name for either the Original "
                       "or Modified Column"));
    auto* side = new WrappingRadioButton(Words(german, "Side By Side", "Nebeneinander"));
    side->setChecked(true);
    column->AddInLine(
        {new WrappingRadioButton(Words(german, "All In One", "Alles in einem")), side});
    column->AddWidget(new WrappingCheckBox(Words(
        german, "Show the count of changes, additions and deletions on a sub-paragraph level.",
        "Die Zahl der Änderungen, Zusätze und Löschungen auch innerhalb der Absätze zeigen, "
        "nicht nur für ganze Absätze.")));
    dialog->SetButtons(Words(german, "Apply", "Übernehmen"), Words(german, "Cancel", "Abbrechen"));
    if (german) {
        dialog->AddThirdButton(QStringLiteral("Zurücksetzen"));
        column->SetError(path, QStringLiteral("Diesen Ordner gibt es nicht."));
    }
    return dialog;
}

std::unique_ptr<Dialog> MakeWideDialog(bool german) {
    auto dialog =
        std::make_unique<Dialog>(QStringLiteral("PDF Comparison Options"), kWideDialog, nullptr);
    FormColumn* left = dialog->AddColumn();
    left->AddHeading(Words(german, "Extraction", "Text entnehmen"));
    left->AddWidget(new WrappingRadioButton(
        Words(german, "Do Quick Text Extraction", "Schnell, ohne Formate")));
    auto* robust = new WrappingRadioButton(
        Words(german, "Do Robust Text Extraction (Slower but retains formatting)",
              "Gründlich (langsamer, behält Formate, Einzüge und die Ausrichtung der Absätze)"));
    robust->setChecked(true);
    left->AddWidget(robust);
    FormColumn* right = dialog->AddColumn();
    right->AddHeading(QStringLiteral("Text"));
    for (const char* name : {"Merge Paragraph", "Connect Hyphens", "Shrink Fonts"})
        right->AddWidget(new WrappingCheckBox(QString::fromLatin1(name)));
    right->AddHeading(QStringLiteral("Quick Options"));
    auto* shadow = new ComboBox;
    shadow->addItem(QStringLiteral("0"));
    shadow->setEnabled(false);
    right->AddBeside(Words(german, "Drop-shadow tolerance", "Schattentoleranz"), shadow);
    dialog->StartRow(Dialog::Parted::ByLine);
    FormColumn* pages = dialog->AddColumn();
    pages->AddBeside(QStringLiteral("Original"), new NumberBox(1, 9999));
    pages->AddBeside(Words(german, "Modified", "Geändert"), new NumberBox(1, 9999));
    FormColumn* passwords = dialog->AddColumn();
    passwords->AddHeading(QStringLiteral("Passwords, for both files"));
    passwords->AddBeside(QStringLiteral("User Password"), new QLineEdit);
    passwords->AddBeside(QStringLiteral("Owner Password"), new QLineEdit);
    dialog->SetButtons(Words(german, "Apply", "Übernehmen"), Words(german, "Cancel", "Abbrechen"));
    return dialog;
}

}  // namespace zorvane
