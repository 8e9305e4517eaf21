#include "common/ui/toolkit_texts.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

namespace zorvane {

namespace {

QLocale LocaleOf(const QString& language) {
    for (int number = QLocale::C + 1; number <= QLocale::LastLanguage; ++number) {
        const auto known = static_cast<QLocale::Language>(number);
        if (QLocale::languageToString(known) == language)
            return {known};
    }
    return QLocale::c();
}

}  // namespace

void ShowToolkitIn(const std::string& language) {
    constexpr const char* kName = "toolkit.texts";
    // Behind its removal a translator may go.
    delete qApp->findChild<QTranslator*>(QString::fromLatin1(kName));
    auto* texts = new QTranslator(qApp);
    texts->setObjectName(QString::fromLatin1(kName));
    const QLocale locale = LocaleOf(QString::fromStdString(language));
    if (texts->load(locale, QStringLiteral("qtbase"), QStringLiteral("_"),
                    QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(texts);
    else
        delete texts;
}

}  // namespace zorvane
