// What a person drags onto a window.
#pragma once

#include <QMimeData>
#include <QStringList>
#include <QUrl>

#include "common/ui/qt_text.h"

namespace zorvane {

/// The path of a file of this machine, byte for byte.
inline QString PathOf(const QUrl& url) {
    if (!url.host().isEmpty())
        return url.toLocalFile();
    const QByteArray bytes =
        QByteArray::fromPercentEncoding(url.path(QUrl::FullyEncoded).toLatin1());
    return ToQt(std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())));
}

/// The files and folders of this machine, by their paths and in their order.
inline QStringList DroppedFiles(const QMimeData& data) {
    QStringList paths;
    for (const QUrl& url : data.urls()) {
        if (url.isLocalFile())
            paths.append(PathOf(url));
    }
    return paths;
}

}  // namespace zorvane
