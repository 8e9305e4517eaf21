#include "common/ui/file_dialogs.h"

#include <algorithm>

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QStandardPaths>

#include "common/picked_paths.h"
#include "common/ui/qt_text.h"
#include "common/ui/ui_text.h"

namespace zorvane {
namespace {

QStringList FiltersOf(const QString& pairs) {
    const QStringList parts = pairs.split(u'|');
    QStringList filters;
    for (qsizetype at = 0; at + 1 < parts.size(); at += 2)
        filters.append(QStringLiteral("%1 (%2)").arg(parts[at].section(u'(', 0, 0).trimmed(),
                                                     QString(parts[at + 1]).replace(u';', u' ')));
    return filters;
}

// In a folder, or on a name in it; one that is not there is no name to open.
void BeginAt(QFileDialog& dialog, const QString& start, bool saving) {
    const QFileInfo place(start);
    if (start.isEmpty())
        return;
    if (place.isDir())
        dialog.setDirectory(start);
    else if (saving || place.exists())
        dialog.selectFile(start);
    else if (place.dir().exists())
        dialog.setDirectory(place.dir());
}

}  // namespace

QString PickFile(FileRequest& request, const UiText& text, QWidget* parent) {
    QFileDialog dialog(parent, request.title);
    const bool saving = request.saving || bIsSaveTitle(FromQt(request.title), FromQt(text("save")));
    dialog.setAcceptMode(saving ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(saving ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    dialog.setOption(QFileDialog::DontConfirmOverwrite, !request.confirm);
    const QStringList filters = FiltersOf(request.filter);
    if (!filters.isEmpty()) {
        dialog.setNameFilters(filters);
        dialog.selectNameFilter(filters.value(request.filter_index - 1));
    }
    BeginAt(dialog, request.start, saving);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return {};
    request.filter_index =
        std::max(1, static_cast<int>(filters.indexOf(dialog.selectedNameFilter())) + 1);
    return dialog.selectedFiles().front();
}

QString PickFolder(const QString& start, SpecialFolders& folders, const UiText& text,
                   QWidget* parent) {
    const QString chosen = QFileDialog::getExistingDirectory(
        parent, text("Browse For Folder"), ToQt(sFolderDialogStart(folders, FromQt(start))));
    return ToQt(sFolderDialogResult(FromQt(chosen)));
}

QString DocumentsFolder() {
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return QFileInfo(folder).isDir() ? folder : QDir::homePath();
}

}  // namespace zorvane
