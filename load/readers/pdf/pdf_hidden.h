// Which letters of a page nobody sees, told when the whole page is known.
#pragma once

#include <cstddef>
#include <vector>

#include "load/readers/pdf/pdf_page.h"

namespace zorvane {

/// Pictures and filled rectangles as a page paints them between its letters.
class PdfGround {
  public:
    void Start();

    /// `letters`: how many were drawn before.
    void AddPicture(const PdfBox& box);
    void AddRectangle(const PdfBox& box, Color color, std::size_t letters);
    /// What is neither hides nothing, but ends what was a letter's ground.
    void AddOther(const PdfBox& box);

    /// Whether the letter has the colour of the rectangle that it is drawn on.
    bool HasColorOf(const PdfCharacter& letter, Color color) const;

    /// Settles which letters are hidden: those under a rectangle that was painted later, unless
    /// nearly all are; and the invisible ones, but for those over a picture and those of a page
    /// that has next to no other text, as the text of a scanned page.
    void Settle(std::vector<PdfCharacter>& letters) const;

  private:
    struct Patch {
        PdfBox box;
        Color color;
        bool rectangle = false;
        std::size_t letters = 0;
    };

    void Cover(std::vector<PdfCharacter>& letters) const;
    bool IsCovered(const PdfCharacter& letter, std::size_t number) const;
    void ShowScan(std::vector<PdfCharacter>& letters) const;

    std::vector<PdfBox> pictures_;
    std::vector<Patch> patches_;  // in the order of drawing
};

}  // namespace zorvane
