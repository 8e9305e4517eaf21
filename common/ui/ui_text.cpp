#include "common/ui/ui_text.h"

#include <QRegularExpression>

namespace zorvane {

QString WithoutMnemonic(const QString& text) {
    static const QRegularExpression kInBrackets(QStringLiteral("\\s*\\(&[^&]\\)"));
    QString plain = text;
    plain.remove(kInBrackets);
    for (qsizetype at = plain.indexOf(u'&'); at >= 0; at = plain.indexOf(u'&', at + 1))
        plain.remove(at, 1);
    return plain;
}

QChar MnemonicOf(const QString& text) {
    for (qsizetype at = text.indexOf(u'&'); at >= 0 && at + 1 < text.size();
         at = text.indexOf(u'&', at + 2))
        if (text[at + 1] != u'&')
            return text[at + 1].toUpper();
    return {};
}

}  // namespace zorvane
