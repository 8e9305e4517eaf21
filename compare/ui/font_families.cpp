#include "compare/ui/font_families.h"

#include <algorithm>
#include <initializer_list>

#include <QStringList>

#include "common/ui/qt_text.h"

namespace zorvane {

namespace {

bool HasAny(const QString& name, std::initializer_list<const char*> words) {
    return std::any_of(words.begin(), words.end(), [&](const char* word) {
        return name.contains(QString::fromLatin1(word), Qt::CaseInsensitive);
    });
}

bool IsSerif(const QString& name) {
    if (name.contains(QStringLiteral("sans"), Qt::CaseInsensitive))
        return false;
    // Those of TeX begin with the letters of their encoding.
    const bool tex = name.startsWith(QStringLiteral("CM")) || name.startsWith(QStringLiteral("SF"));
    return tex || HasAny(name, {"serif", "times", "roman", "georgia", "garamond", "palatino",
                                "minion", "cambria", "century", "bookman", "nimbus"});
}

}  // namespace

QString FamilyOfFace(const QString& name) {
    if (name.contains(u' '))
        return name;
    QString family = name.section(u'-', 0, 0);
    for (const char* maker : {"MT", "PS", "LT"}) {
        if (family.endsWith(QString::fromLatin1(maker)) && family.size() > 4)
            family.chop(2);
    }
    for (qsizetype at = family.size() - 1; at > 0; --at) {
        if (family[at].isUpper() && family[at - 1].isLower())
            family.insert(at, u' ');
    }
    return family.isEmpty() ? name : family;
}

QFont FaceOf(std::string_view name) {
    const QString family = ToQt(name);
    QFont font;
    const QString whole = FamilyOfFace(family);
    font.setFamilies(whole == family ? QStringList{family} : QStringList{family, whole});
    // A fixed pitch family that is missing must not be replaced by a proportional one.
    if (HasAny(family, {"courier", "mono", "consolas"}))
        font.setStyleHint(QFont::Monospace, QFont::PreferDefault);
    else if (IsSerif(family))
        font.setStyleHint(QFont::Serif, QFont::PreferDefault);
    return font;
}

}  // namespace zorvane
