// Draws all dialogs to PNG files, to be looked at:
//   QT_QPA_PLATFORM=offscreen zv_dialog_pictures folder [language folder-of-language-files]
// With QT_SCALE_FACTOR=2 the files are named by it.
#include <filesystem>
#include <iostream>

#include <QApplication>
#include <QTest>
#include <QTimer>

#include "app/ui/about_dialog.h"
#include "common/translator.h"
#include "common/ui/font_dialog.h"
#include "common/ui/language_dialog.h"
#include "common/ui/question.h"
#include "common/ui/theme.h"
#include "compare/ui/advanced_options_dialog.h"
#include "compare/ui/compare_dialogs.h"
#include "compare/ui/report_options_dialog.h"
#include "compare/ui/type_dialogs.h"
#include "options/recent_items.h"

namespace zorvane {
namespace {

class Pictures {
  public:
    Pictures(Theme& theme, UiText text, QString folder, QString language)
        : theme_(theme),
          text_(std::move(text)),
          folder_(std::move(folder)),
          language_(std::move(language)) {}

    bool Draw() {
        for (const bool dark : {false, true}) {
            theme_.Force(dark ? ColorTokens::Dark() : ColorTokens::Light());
            suffix_ = dark ? QStringLiteral("-dark") : QStringLiteral("-light");
            DrawTypes();
            DrawOptions();
            DrawSmall();
        }
        return saved_;
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
        theme_.Dress(wrong);
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
                theme_.Dress(*about);
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
        theme_.Dress(dialog);
        dialog.show();
        Save(dialog, name);
    }
    void Save(QWidget& dialog, const char* name) {
        QTest::qWait(40);
        const QString ratio = dialog.devicePixelRatio() > 1 ? QStringLiteral("-2x") : QString();
        saved_ = dialog.grab().save(folder_ + u'/' + QString::fromLatin1(name) + suffix_ +
                                    language_ + ratio + QStringLiteral(".png")) &&
                 saved_;
    }

    Theme& theme_;
    UiText text_;
    QString folder_;
    QString language_;
    QString suffix_;
    bool saved_ = true;
};

// A copy of the language file, since texts that it lacks are put at its end.
bool Load(modTranslator& translator, const std::string& language, const std::string& files,
          const std::string& folder) {
    namespace fs = std::filesystem;
    const std::string name = language + "-Zorvane.txt";
    fs::copy_file(fs::path(files) / name, fs::path(folder) / name,
                  fs::copy_options::overwrite_existing);
    translator.gsLanguage = language;
    translator.gsLanguageFile = (fs::path(folder) / name).string();
    translator.glLanguageFileFormat = GetFileFormat(translator.gsLanguageFile);
    return translator.LoadLanguageTable();
}

}  // namespace
}  // namespace zorvane

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    if (argc != 2 && argc != 4) {
        std::cerr << "usage: zv_dialog_pictures folder [language folder-of-language-files]\n";
        return 2;
    }
    zorvane::Theme theme(application);
    zorvane::modTranslator translator;
    const std::string language = argc == 4 ? argv[2] : "";
    if (!language.empty() && !zorvane::Load(translator, language, argv[3], argv[1])) {
        std::cerr << "cannot read the language file\n";
        return 1;
    }
    const zorvane::UiText text(
        [&](std::string_view english) { return translator.Translate(english); });
    zorvane::Pictures pictures(theme, text, QString::fromLocal8Bit(argv[1]),
                               language.empty() ? QString() : zorvane::ToQt("-" + language));
    return pictures.Draw() ? 0 : 1;
}
