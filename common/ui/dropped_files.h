// What a person drags onto a window.
#pragma once

#include <QMimeData>
#include <QStringList>
#include <QUrl>

namespace zorvane {

/// The files and folders of this machine, by their paths and in their order.
inline QStringList DroppedFiles(const QMimeData& data) {
    QStringList paths;
    for (const QUrl& url : data.urls()) {
        if (url.isLocalFile())
            paths.append(url.toLocalFile());
    }
    return paths;
}

}  // namespace zorvane
