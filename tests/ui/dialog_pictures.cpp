// Draws all dialogs.
#include <QApplication>
#include <QTimer>

#include "app/ui/about_dialog.h"
#include "common/ui/font_dialog.h"
#include "common/ui/language_dialog.h"
#include "common/ui/question.h"
#include "compare/ui/advanced_options_dialog.h"
#include "compare/ui/compare_dialogs.h"
#include "compare/ui/report_options_dialog.h"
#include "compare/ui/type_dialogs.h"
#include "options/recent_items.h"
#include "tests/ui/pictures.h"

namespace zorvane {
namespace {

class DialogPictures {
  public:
    explicit DialogPictures(PictureRun& run) : run_(run) {}

    void Draw() {
        for (const bool dark : {false, true}) {
            run_.theme.Force(dark ? ColorTokens::Dark() : ColorTokens::Light());
            suffix_ = dark ? "-dark" : "-light";
            DrawTypes();
            DrawOptions();
            DrawSmall();
        }
    }

  private:
    void DrawTypes() {
        clsMRU extensions;
        Show(TextOptionsDialog(extensions, text_, nullptr), "type-text");
        clsCompareFileOptions options = DefaultCompareFileOptions();
        options.sDOCPassword_TO_Original.SetData("secret");
        Show(WordOptionsDialog(options, text_, nullptr), "type-word");
        Show(SheetOptionsDialog(options, {true, false}, {}, text_, nullptr), "type-sheets");
        Show(HtmlOptionsDialog(options, text_, nullptr), "type-html");
        CompareFilesSettings settings;
        settings.bBCLUsingPageRange = true;
        settings.lBCLPageTo = 12;
        settings.sBCLPasswordOwner = "password";
        Show(PdfOptionsDialog(settings, text_, nullptr), "type-pdf");
        settings.bConvertAllSlides = false;
        Show(SlideOptionsDialog(settings, text_, nullptr), "type-slides");
        Show(SelectSheetDialog({"Prices", "Costs", "Q1 2026"}, text_, nullptr), "select-sheet");
    }

    void DrawOptions() {
        clsCompareFileOptions options = DefaultCompareFileOptions();
        options.sIgnoreRegularExpression.SetData("Draft \\d+@@Page \\d+");
        Show(AdvancedOptionsDialog(options, text_, nullptr), "advanced");
        options.sIgnoreRegularExpression.SetData("Draft (\\d+");
        AdvancedOptionsDialog wrong(options, text_, nullptr);
        run_.theme.Dress(wrong);
        wrong.show();
        wrong.accept();
        Show(std::move(wrong), "advanced-wrong");
        CompareFilesSettings settings;
        settings.mlReportDefaultFileType_MD = 1;
        settings.mlReportDefaultStyle_MD = 2;
        settings.msgReportFileHTM_MD = "~/Documents/Tessera/ZorvaneReport.HTM";
        settings.msgReportFileDOC_MD = "~/Documents/Tessera/ZorvaneReport.DOC";
        settings.msgReportTitleHTM_MD = "Services Agreement, drafts 3 and 4";
        const PerSide<QString> names{QStringLiteral("Services Agreement, draft 3.docx"),
                                     QStringLiteral("Services Agreement, draft 4.docx")};
        ReportOptionsDialog report(settings, names, {}, text_, nullptr);
        Show(std::move(report), "report-html");
        settings.mlReportDefaultFileType_MD = 4;
        Show(ReportOptionsDialog(settings, names, {}, text_, nullptr), "report-document");
    }

    void DrawSmall() {
        Show(FontDialog(text_, {QStringLiteral("DejaVu Serif"), 11}, nullptr), "font");
        Show(LanguageDialog({{"English", "German", "Japanese"}, 1}, {}, {}, text_, nullptr),
             "language");
        Show(GoToDialog(text_, 3, 17, nullptr), "go-to");
        Show(QuestionDialog(
                 {.title = text_("Conversion Failed"),
                  .text = text_("Could not load the PDF file: ") + QStringLiteral("lease.pdf") +
                          text_(", we will try an alternate approach and try again ('Quick "
                                "Extraction' vs. 'Robust Extraction'). See 'Compare Options'\\PDF "
                                "for more details."),
                  .choices = {text_("Continue")},
                  .check = text_("Never show this message again")},
                 nullptr),
             "notice");
        QTimer::singleShot(0, [this] {
            if (auto* about = qobject_cast<Dialog*>(QApplication::activeModalWidget())) {
                run_.theme.Dress(*about);
                Save(*about, "about");
                about->reject();
            }
        });
        ShowAbout({.version = QStringLiteral("0.9.0"),
                   .system = QStringLiteral("Debian GNU/Linux 12 (bookworm), Linux 6.1.0, x86_64"),
                   .settings_file = QStringLiteral("/home/ada/.config/Zorvane/Zorvane.INI")},
                  text_, nullptr);
    }

    void Show(Dialog&& dialog, const char* name) {
        run_.theme.Dress(dialog);
        dialog.show();
        Save(dialog, name);
    }
    void Save(QWidget& dialog, const char* name) { run_.Save(dialog, name + suffix_); }

    PictureRun& run_;
    const UiText text_{
        [this](std::string_view english) { return run_.world.process.Translate(english); }};
    std::string suffix_;
};

}  // namespace

bool DrawDialogs(PictureRun& run) {
    DialogPictures(run).Draw();
    return true;
}

}  // namespace zorvane
