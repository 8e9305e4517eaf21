// A place to drop a document on, with the other ways to choose one.
#pragma once

#include <QFrame>
#include <QLabel>
#include <QPushButton>
#include <QStringList>

class QHBoxLayout;

namespace zorvane {

class DropArea : public QFrame {
    Q_OBJECT
    Q_PROPERTY(QString caption READ Invitation WRITE SetInvitation)
  public:
    /// `invitation` such as "Drop the original here".
    explicit DropArea(const QString& invitation, QWidget* parent = nullptr);

    void AddButton(QPushButton* button);
    const QString& Invitation() const { return invitation_; }
    void SetInvitation(const QString& invitation);
    /// The document that was chosen stands instead of the invitation.
    void SetChosen(const QString& name);

  Q_SIGNALS:
    void FilesDropped(const QStringList& paths);
    void TextDropped(const QString& text);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

  private:
    void SetHovered(bool hovered);

    QString invitation_;
    QLabel* words_;
    QHBoxLayout* buttons_;
    bool hovered_ = false;
};

}  // namespace zorvane
