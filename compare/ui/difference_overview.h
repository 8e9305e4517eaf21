// All differences of a compare on one strip, with the window's place in the text.
#pragma once

#include <functional>
#include <vector>

#include <QPixmap>
#include <QTimer>
#include <QWidget>

#include "compare/ui/mark_source.h"
#include "compare/ui/view_colors.h"

namespace zorvane {

inline constexpr int kOverviewWidth = 18;

/// A difference as a part of the whole text, 0 to 1.
struct OverviewStripe {
    double begin = 0;
    double end = 0;
    MarkKind kind = MarkKind::None;
    std::int32_t paragraphs = 1;
};

/// Paragraphs in sight, of all; counted from 1.
struct OverviewPlaces {
    std::int32_t first = 1;
    std::int32_t last = 0;
    std::int32_t all = 0;
    friend bool operator==(const OverviewPlaces&, const OverviewPlaces&) = default;
};

/// The picture is made anew by a timer after the marks or the size changed: painting 50,000 marks
/// at each scroll step would take half a second.
class DifferenceOverview : public QWidget {
  public:
    explicit DifferenceOverview(QWidget* parent = nullptr);

    void SetColors(const ViewColors& colors);
    void SetMarks(std::vector<OverviewStripe> marks);
    /// The part of the text in sight.
    void SetWindow(double begin, double end);
    /// What a screen reader is told to be in sight.
    void SetPlaces(const OverviewPlaces& places);
    const OverviewPlaces& Places() const { return places_; }
    std::function<QString(const OverviewPlaces&)> place_words;
    /// Makes a picture that waits now; for pictures of the window and tests.
    void Flush();
    int PicturesMade() const { return pictures_made_; }

    /// Brings a part of the text into the window's middle.
    std::function<void(double part)> go_to;
    std::function<void(QWheelEvent*)> wheel;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    void Later();
    void MakePicture();
    double PartAt(double y) const;

    ViewColors colors_ = ViewColors::Light();
    std::vector<OverviewStripe> marks_;
    QPixmap picture_;
    QTimer timer_;
    double begin_ = 0;
    double end_ = 1;
    OverviewPlaces places_;
    int pictures_made_ = 0;
};

}  // namespace zorvane
