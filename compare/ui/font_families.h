// From the name that a document gives its font to a face that is installed.
#pragma once

#include <string_view>

#include <QFont>
#include <QString>

namespace zorvane {

/// A font that looks for the family as it is named; then, where that is the name of one face as PDF
/// documents have them ("LiberationSerif-Bold", "TimesNewRomanPS-BoldMT"), for the family of that
/// face; then for one of its kind.
QFont FaceOf(std::string_view name);
/// "Liberation Serif", "Times New Roman"; `name` itself where it is a family's already.
QString FamilyOfFace(const QString& name);

}  // namespace zorvane
