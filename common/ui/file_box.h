// The box in which a file or folder is named: typed, chosen from the last ones, or dropped.
#pragma once

#include <QStringList>

#include "common/ui/combo_boxes.h"

namespace zorvane {

class FileBox : public ComboBox {
    Q_OBJECT
  public:
    /// `icon` stands in front of each path; without one it holds other texts, which are shown as
    /// they are.
    FileBox(const QString& name, const QString& icon, QWidget* parent = nullptr);

    void SetRecent(const QStringList& paths);
    void SetPath(const QString& path);
    /// What stands there; "~" in front of a path is the user's own folder.
    QString Path() const;
    /// Where room is short: the name without its folder.
    void SetNamesOnly(bool names_only);

  Q_SIGNALS:
    /// Typed and ended by Enter, or chosen from the list.
    void PathChosen(const QString& path);
    /// Ended by Enter, behind the other.
    void Entered();
    void FilesDropped(const QStringList& paths);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    QString ShownText(const QFontMetrics& metrics, int width) const override;
    ListRow ShownRow() const override;

  private:
    void PlaceEditor();
    void EndByEnter();

    QString icon_;
    QStringList recent_;
    RowModel rows_;
    bool names_only_ = false;
};

/// `path` in `width`: whole if it fits; else folders give way from the left,
/// "…/Tessera/draft.docx", and the name only when it alone is too wide. Both kinds of slash part
/// folders.
QString ElidedPath(const QString& path, const QFontMetrics& metrics, int width);
QString FileNameOf(const QString& path);
/// "~/Documents" for what lies in the user's own folder.
QString WithHomeShort(const QString& path);
QString WithHomeLong(const QString& path);

}  // namespace zorvane
