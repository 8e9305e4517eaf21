// The desktop's dialogs for files and folders, by the rules of the core.
#pragma once

#include <QString>

class QWidget;

namespace zorvane {

class SpecialFolders;
class UiText;

/// `filter` is in pairs "name|patterns|name|patterns", patterns apart by ";".
struct FileRequest {
    QString title;
    QString filter;
    int filter_index = 1;  ///< of the pairs, from 1; in and out
    bool saving = false;   ///< also where the title says "save"
    QString start;         ///< a name or a folder; may be empty
    bool confirm = false;  ///< asks about a file that exists
};

/// Empty when cancelled. Without `confirm` whoever saves asks about a file that exists.
QString PickFile(FileRequest& request, const UiText& text, QWidget* parent);
/// Ends in a separator; empty when cancelled.
QString PickFolder(const QString& start, SpecialFolders& folders, const UiText& text,
                   QWidget* parent);

/// The desktop's folder of documents, which is a promise that not every desktop keeps: else the
/// home.
QString DocumentsFolder();

}  // namespace zorvane
