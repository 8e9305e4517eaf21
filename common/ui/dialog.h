// What all dialogs share: their columns of fields, their buttons, and how a wrong field is told.
#pragma once

#include <map>

#include <QDialog>
#include <QLabel>
#include <QPointer>

#include "common/ui/buttons.h"
#include "common/ui/ui_text.h"

class QGridLayout;
class QHBoxLayout;
class QVBoxLayout;

namespace zorvane {

/// Captions and fields under each other; all fields share their left and right edges.
class FormColumn : public QWidget {
    Q_OBJECT
  public:
    explicit FormColumn(QWidget* parent);

    /// A group begins, with 12 more of room above unless it is the first.
    void AddHeading(const QString& text);
    /// A caption above a field that runs the full width.
    QLabel* AddAbove(const QString& caption, QWidget* field);
    /// A caption beside a short field, which keeps its own width.
    QLabel* AddBeside(const QString& caption, QWidget* field);
    void AddWidget(QWidget* widget);
    /// Up to three short ones beside each other.
    void AddInLine(const QList<QWidget*>& widgets);
    void AddHint(const QString& text);

    /// A red edge and the message under the field; an empty one takes both away. A field may be a
    /// part of what was added. False if it is not in this column.
    bool SetError(QWidget* field, const QString& message);

  protected:
    /// A caption is grey as its field is.
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    QLabel* AddErrorLabel(QWidget* field, int column);
    QLabel* ErrorLabelOf(const QWidget* field) const;

    QGridLayout* grid_;
    std::map<const QWidget*, QLabel*> errors_;
    std::map<const QObject*, QLabel*> captions_;
};

/// A dialog is as wide as its kind (`measures`), or wider where a translation needs it, and as
/// high as what it holds.
class Dialog : public QDialog {
    Q_OBJECT
  public:
    Dialog(const QString& title, int width, QWidget* parent);

    /// A column beside the one before.
    FormColumn* AddColumn();
    /// A column for whoever lays it out: a page behind a tab.
    FormColumn* MakeColumn(QWidget* parent);
    /// What follows stands below, across all columns; with a line where it concerns another thing.
    enum class Parted : std::uint8_t { Plain, ByLine };
    void StartRow(Parted parted);
    void AddWide(QWidget* widget);

    /// Below right: Cancel, then the one that Enter presses. Empty `cancel`: there is none.
    void SetButtons(const QString& accept, const QString& cancel);
    /// To the left of them.
    Button* AddThirdButton(const QString& text);
    Button* AcceptButton() const { return accept_; }
    Button* CancelButton() const { return cancel_; }

    /// The field that is changed most often; its contents are selected.
    void SetFirstFocus(QWidget* field);
    /// Tells that `field` is wrong and gives it the focus.
    void ShowError(QWidget* field, const QString& message);
    void ClearErrors();

    void accept() override;

  protected:
    /// May the dialog close with what it holds? Tells what is wrong otherwise.
    virtual bool Check() { return true; }
    void showEvent(QShowEvent* event) override;

  private:
    QHBoxLayout* ButtonRow();

    int width_;
    QVBoxLayout* rows_;
    QHBoxLayout* columns_ = nullptr;
    QHBoxLayout* buttons_ = nullptr;
    QList<FormColumn*> all_columns_;
    QPointer<QWidget> first_focus_;
    Button* accept_ = nullptr;
    Button* cancel_ = nullptr;
};

}  // namespace zorvane
