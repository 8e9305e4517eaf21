// A card in place of a text: on the window's ground, in the middle, never wider than is read well.
#pragma once

#include <QWidget>

#include "common/ui/cards.h"

namespace zorvane {

class CardGround : public QWidget {
  public:
    explicit CardGround(QWidget* parent);

    /// Takes the card in place of the one before, and shows itself; nullptr hides.
    void SetCard(Card* card);
    Card* Shown() const { return card_; }

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    void Arrange();

    Card* card_ = nullptr;
};

}  // namespace zorvane
