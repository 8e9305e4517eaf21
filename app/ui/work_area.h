// Where the windows of viewers stand: one alone, tabs from two on, or side by side as the person
// lays them out.
#pragma once

#include <functional>
#include <vector>

#include <QMdiArea>
#include <QStackedWidget>
#include <QToolButton>
#include <QWidget>

#include "common/ui/bars.h"

namespace zorvane {

class WorkArea : public QWidget {
  public:
    explicit WorkArea(const QString& close_name, QWidget* parent);

    /// Borrowed; a page that is deleted goes by `Remove` first.
    void Add(QWidget& page, const QString& icon);
    void Remove(QWidget& page);
    void Show(QWidget& page);
    void SetCaption(QWidget& page, const QString& caption);
    QWidget* Current() const;
    const std::vector<QWidget*>& Pages() const { return pages_; }
    void ShowNext(int step);

    /// The windows stand free, not in tabs.
    bool Free() const { return rooms_->currentWidget() == area_; }
    void Cascade() { LayOut(&QMdiArea::cascadeSubWindows); }
    void Tile() { LayOut(&QMdiArea::tileSubWindows); }

    /// The person chose another page, or closed one.
    std::function<void(QWidget&)> chosen;
    std::function<void(QWidget&)> close_wanted;
    /// The windows were laid out in another way, or another is in front.
    std::function<void()> laid_out;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    void LayOut(void (QMdiArea::*arrange)());
    void BackToTabs();
    void AddTab(QWidget& page, const QString& icon);
    int PlaceOf(const QWidget* page) const;
    void UpdateTabs();

    QString close_name_;
    TabStrip* tabs_;
    QWidget* strip_;
    QStackedWidget* rooms_;
    QStackedWidget* stack_;
    QMdiArea* area_;
    std::vector<QWidget*> pages_;
};

}  // namespace zorvane
