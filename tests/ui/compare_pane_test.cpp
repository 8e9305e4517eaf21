#include "compare/ui/compare_pane.h"

#include <map>
#include <random>

#include <gtest/gtest.h>

#include "compare/document/heading_places.h"
#include "tests/ui/view_world.h"

namespace zorvane {
namespace {

std::string Sentence(int seed, int words) {
    std::mt19937 random(static_cast<unsigned>(seed));
    static const char* const kWords[] = {"rent",  "tenant",    "shall", "premises", "month",
                                         "lease", "agreement", "term",  "notice",   "party"};
    std::string text = "P" + std::to_string(seed);
    for (int at = 0; at < words; ++at)
        text += std::string(" ") + kWords[random() % 10];
    return text;
}

// Two texts with changes, paragraphs of one side at begin and end, and equal ones of all lengths.
PerSide<RichText> TwoTexts(int paragraphs) {
    std::string one;
    std::string other = "only here at the top\r\nand this too\r\n";
    for (int at = 0; at < paragraphs; ++at) {
        const std::string text = Sentence(at, 3 + at * 7 % 40);
        if (at % 11 == 3) {
            one += text + " which was added for one side alone\r\n";
        } else if (at % 7 == 2) {
            one += text + "\r\n";
            other += text + " and a good deal more was put in here so that it is longer\r\n";
        } else if (at % 13 == 5) {
            other += Sentence(at + 10000, 60) + "\r\n";
        } else {
            one += text + "\r\n";
            other += text + "\r\n";
        }
    }
    one += "the last one of the first text";
    return {RichText::Plain(Wide(one)), RichText::Plain(Wide(other))};
}

// Equal paragraphs in sight of both views, and how far apart they begin.
int EqualPairsInSight(ShownPair& shown, double& worst) {
    int pairs = 0;
    const std::vector<std::int32_t> partners = shown.comparison->Partners();
    std::map<std::int32_t, double> other;
    for (const ShownRow& row : shown.Page(Side::Modified).Shown())
        for (const ShownBlock& block : shown.Page(Side::Modified).BlocksOf(row))
            other[block.block.paragraph.value] = block.y;
    for (const ShownRow& row : shown.Page(Side::Original).Shown()) {
        for (const ShownBlock& block : shown.Page(Side::Original).BlocksOf(row)) {
            const auto at = static_cast<std::size_t>(block.block.paragraph.value - 1);
            if (at >= partners.size() || !other.contains(partners[at]))
                continue;
            ++pairs;
            worst = std::max(worst, std::abs(other[partners[at]] - block.y));
        }
    }
    return pairs;
}

TEST(ComparePane, KeepsPairsAtOneHeightWhereverItIsScrolled) {
    const PerSide<RichText> texts = TwoTexts(400);
    ShownPair shown(texts.original, texts.modified);
    std::mt19937 random(5);
    double worst = 0;
    int pairs = EqualPairsInSight(shown, worst);
    EXPECT_GT(pairs, 3);
    for (int step = 0; step < 300; ++step) {
        const Side side = step % 2 == 0 ? Side::Original : Side::Modified;
        const int far = step % 5 == 0 ? 20000 : 300;
        shown.pane.View(side).ScrollByPixels(std::uniform_int_distribution<int>(-far, far)(random));
        pairs += EqualPairsInSight(shown, worst);
        ASSERT_EQ(shown.Page(Side::Original).Top(), shown.Page(Side::Modified).Top());
    }
    EXPECT_GT(pairs, 1000);
    EXPECT_EQ(worst, 0);
}

TEST(ComparePane, KeepsPairsOppositeThroughEdits) {
    const PerSide<RichText> texts = TwoTexts(120);
    ShownPair shown(texts.original, texts.modified);
    std::mt19937 random(9);
    const auto upto = [&](std::int32_t most) {
        return std::uniform_int_distribution<std::int32_t>(0, most)(random);
    };
    const std::u16string pieces[] = {u"x", u"", u"\r\n", u"a\r\nb\r\nc", u"\r\n\r\n"};
    for (int step = 0; step < 120; ++step) {
        SCOPED_TRACE(step);
        RichDocument& document = step % 3 == 0 ? shown.modified : shown.original;
        document.Replace({CharPos{upto(document.Length())}, upto(60)}, pieces[upto(4)]);
        if (step % 7 == 0)
            document.Undo();
        shown.pane.View(Side::Original).ScrollByPixels(upto(2000) - 1000);
        // Each paragraph stands in one row, in order, and both views tell the same rows.
        for (const Side side : kBothSides) {
            const ViewRows& rows = shown.Page(side).Rows();
            std::int32_t next = 0;
            for (std::int32_t row = 0; row < rows.Count(); ++row) {
                const ViewRow what = rows.At(row);
                if (what.block_count == 0)
                    continue;
                ASSERT_EQ(what.first_block, next);
                next += what.block_count;
                ASSERT_EQ(rows.RowOfBlock(what.first_block), row);
            }
            ASSERT_EQ(next, shown.Page(side).Index().BlockCount());
        }
        for (const ShownRow& row : shown.Page(Side::Original).Shown())
            ASSERT_EQ(row.height, shown.Page(Side::Modified).RowHeight(row.row));
    }
}

TEST(ComparePane, LabelsWhatStandsOnOneSideAlone) {
    std::string many = "equal\r\n";
    for (int at = 0; at < 14; ++at)
        many += Sentence(at, 20) + "\r\n";
    ShownPair shown(RichText::Plain(u"equal\r\nend"), RichText::Plain(Wide(many + "end")), 1000,
                    300);
    ViewRows& rows = const_cast<ViewRows&>(shown.Page(Side::Original).Rows());
    ASSERT_TRUE(rows.At(5).IsRoom());
    const RoomRun run = rows.RunAt(5);
    EXPECT_EQ(run.paragraphs, 14);
    EXPECT_EQ(run.first_row, 1);
    EXPECT_EQ(PaneTexts::English().only_in(Side::Modified, 14),
              QStringLiteral("only in Modified, 14 paragraphs"));
    // Scrolled into the run the label is still in sight: where it stands is no hatching.
    shown.pane.View(Side::Modified).ScrollByPixels(250);
    QApplication::processEvents();
    const QImage picture = shown.pane.View(Side::Original).viewport()->grab().toImage();
    int letters = 0;
    for (int x = 50; x < 250; ++x)
        for (int y = 4; y < 26; ++y)
            letters += picture.pixelColor(x, y).lightness() < 120 ? 1 : 0;
    EXPECT_GT(letters, 50);
}

TEST(ComparePane, HatchesOnlyMissingParagraphs) {
    ShownPair shown(RichText::Plain(Wide(Sentence(1, 60))),
                    RichText::Plain(Wide(Sentence(1, 60) + " and " + Sentence(2, 50))));
    const ShownRow row = shown.Page(Side::Original).Shown().front();
    const double content = shown.Page(Side::Original).ContentHeight(row.row);
    ASSERT_GT(row.height, content + 30);
    const QImage picture = shown.pane.View(Side::Original).viewport()->grab().toImage();
    for (int y = static_cast<int>(content); y < row.height; y += 3)
        EXPECT_EQ(picture.pixelColor(300, y), ViewColors::Light().changed.row);
}

TEST(ComparePane, FoldsWhatDidNotChangeAndOpensItAgain) {
    std::string one;
    for (int at = 0; at < 40; ++at)
        one += Sentence(at, 5) + "\r\n";
    std::string other = one;
    other.insert(other.find("P20 ") + 4, "new ");
    ShownPair shown(RichText::Plain(Wide(one)), RichText::Plain(Wide(other)));
    const std::int32_t rows = shown.Page(Side::Original).Rows().Count();
    shown.pane.SetFolded(true);
    const ViewRows& folded = shown.Page(Side::Original).Rows();
    EXPECT_LT(folded.Count(), 8);
    std::int32_t hidden = 0;
    std::int32_t fold_row = -1;
    for (std::int32_t row = 0; row < folded.Count(); ++row) {
        hidden += folded.At(row).folded;
        if (folded.At(row).folded > 0)
            fold_row = row;
    }
    EXPECT_EQ(hidden + folded.Count() - 2, rows);
    // The caret goes over a fold, not into it.
    shown.original.MoveCaret(CharPos{static_cast<std::int32_t>(one.find("P21 "))});
    QKeyEvent down(QEvent::KeyPress, Qt::Key_Down, Qt::NoModifier);
    for (int step = 0; step < 3; ++step)
        QApplication::sendEvent(&shown.pane.View(Side::Original), &down);
    EXPECT_EQ(shown.Page(Side::Original)
                  .Rows()
                  .At(shown.Page(Side::Original)
                          .Rows()
                          .RowOfBlock(shown.Page(Side::Original)
                                          .Index()
                                          .OfChar(shown.original.Caret().Caret())
                                          .number))
                  .folded,
              0);
    shown.pane.View(Side::Original).Events().fold_opened(fold_row);
    const std::int32_t opened = shown.Page(Side::Original).Rows().Count();
    EXPECT_GT(opened, 10);
    shown.pane.SetComparison(shown.comparison);
    EXPECT_EQ(shown.Page(Side::Original).Rows().Count(), opened) << "more of the result is known";
    shown.pane.SetFolded(false);
    EXPECT_EQ(shown.Page(Side::Original).Rows().Count(), rows);
}

TEST(ComparePane, EachFoldOpensForItself) {
    const PerSide<RichText> texts = TwoTexts(80);
    ShownPair shown(texts.original, texts.modified);
    shown.pane.SetFoldRule({}, true);
    for (const bool merged : {false, true}) {
        SCOPED_TRACE(merged);
        shown.pane.SetAllInOne(merged);
        RichTextView& view = merged ? shown.pane.MergedView() : shown.pane.View(Side::Original);
        const ViewRows& rows = view.Page().Rows();
        const std::int32_t all = rows.Count();
        shown.pane.SetFolded(true);
        EXPECT_LT(rows.Count(), all);
        for (std::int32_t row = 0; row < rows.Count(); ++row) {
            const ViewRow fold = rows.At(row);
            if (fold.folded == 0)
                continue;
            const std::int32_t before = rows.Count();
            view.Events().fold_opened(row);
            EXPECT_EQ(rows.Count(), before + fold.folded - 1);
            EXPECT_EQ(rows.At(row).folded, 0);
        }
        EXPECT_EQ(rows.Count(), all);
        shown.pane.SetFolded(false);
    }
}

TEST(ComparePane, FoldsKeepTheHeadingAboveADifference) {
    RichText one;
    CharFormat bold;
    bold.bold = true;
    for (int at = 0; at < 40; ++at)
        one.AppendPlain(Wide(Sentence(at, 5) + "\r\n"), at == 7 || at == 12 ? bold : CharFormat());
    ShownPair shown(one, one);
    shown.modified.Replace({CharPos{one.Length() / 2}, 0}, u"new");
    shown.Compare();
    shown.pane.SetFoldRule({}, true);
    shown.pane.SetHeadings(HeadingPlaces(one));
    shown.pane.SetFolded(true);
    for (const bool merged : {false, true}) {
        SCOPED_TRACE(merged);
        shown.pane.SetAllInOne(merged);
        const ViewPage& page = merged ? shown.pane.MergedView().Page() : shown.Page(Side::Original);
        std::vector<std::int32_t> kept;
        for (std::int32_t row = 0; row < page.Rows().Count(); ++row) {
            const ViewRow shown_row = page.Rows().At(row);
            if (shown_row.folded == 0)
                kept.push_back(page.Index().At(shown_row.first_block).paragraph.value);
        }
        ASSERT_FALSE(kept.empty());
        EXPECT_EQ(kept.front(), 13) << "not the one further above";
    }
}

TEST(ComparePane, MergesBothTextsInOneView) {
    ShownPair shown(RichText::Plain(u"same\r\nthe fee is 4,200 now\r\ngone\r\nend"),
                    RichText::Plain(u"same\r\nthe fee is 4,850 now\r\nend\r\ncame"));
    shown.pane.SetAllInOne(true);
    RichTextView& view = shown.pane.MergedView();
    EXPECT_EQ(view.Document().Text(), u"same\r\nthe fee is 4,2004,850 now\r\ngone\r\nend\r\ncame");
    const MarkSource& marks = *view.Page().Layouts().Marks();
    const std::array<std::int32_t, 2> numbers[] = {{1, 1}, {2, 2}, {3, 0}, {4, 3}, {0, 4}};
    const MarkKind kinds[] = {MarkKind::None, MarkKind::Changed, MarkKind::Deleted, MarkKind::None,
                              MarkKind::Added};
    for (std::int32_t at = 0; at < 5; ++at) {
        SCOPED_TRACE(at);
        EXPECT_EQ(marks.Numbers(ParagraphNumber{at + 1}), numbers[at]);
        EXPECT_EQ(marks.Of(ParagraphNumber{at + 1}).kind, kinds[at]);
    }
    const std::vector<WordMark> words = marks.Words(ParagraphNumber{2});
    ASSERT_EQ(words.size(), 2U);
    EXPECT_EQ(words[0], (WordMark{11, 5, MarkKind::Changed, MarkLine::Strike, true}));
    EXPECT_EQ(words[1], (WordMark{16, 5, MarkKind::Changed, MarkLine::Underline, false}));
}

TEST(ComparisonMarks, MarkTheWordsOfEachSide) {
    ShownPair shown(RichText::Plain(u"within thirty days, in cash"),
                    RichText::Plain(u"within forty-five days, duly, in cash"));
    for (const Side side : kBothSides) {
        const MarkSource& marks = *shown.Page(side).Layouts().Marks();
        std::u16string marked;
        const RichDocument& document = side == Side::Original ? shown.original : shown.modified;
        for (const WordMark& word : marks.Words(ParagraphNumber{1}))
            marked += document.Text({CharPos{word.first}, word.length}) + u"|";
        EXPECT_TRUE(marked.find(side == Side::Original ? u"thirty" : u"forty-five") !=
                    std::u16string::npos);
        EXPECT_EQ(marked.find(u"duly") != std::u16string::npos, side == Side::Modified);
    }
    // What was edited since has no marks.
    shown.original.Replace({CharPos{0}, 0}, u"x");
    EXPECT_EQ(shown.Page(Side::Original).Layouts().Marks()->Of(ParagraphNumber{1}).kind,
              MarkKind::None);
}

TEST(ComparePane, ShowsEachDifferenceAndItsPlaceInTheOverview) {
    const PerSide<RichText> texts = TwoTexts(300);
    ShownPair shown(texts.original, texts.modified);
    for (std::int32_t record = 0;
         record < static_cast<std::int32_t>(shown.comparison->records.size()); record += 3) {
        shown.pane.SetCurrent(record);
        bool seen = false;
        for (const ShownRow& row : shown.Page(Side::Modified).Shown())
            seen = seen || MarkOfRow(shown.Page(Side::Modified), row.row).record == record;
        EXPECT_TRUE(seen) << "difference " << record;
    }
    const int pictures = shown.pane.Overview().PicturesMade();
    for (int step = 0; step < 50; ++step)
        shown.pane.View(Side::Original).ScrollByPixels(-60);
    EXPECT_EQ(shown.pane.Overview().PicturesMade(), pictures);
}

// Whatever is switched in whatever order, both sides stay paired and nothing is left behind.
TEST(ComparePane, TakesEverySwitchInAnyOrder) {
    const PerSide<RichText> texts = TwoTexts(80);
    ShownPair shown(texts.original, texts.modified);
    std::mt19937 random(4);
    for (int step = 0; step < 120; ++step) {
        SCOPED_TRACE(step);
        const bool on = random() % 2 == 0;
        switch (random() % 10) {
            case 0:
                shown.pane.SetAligned(on);
                break;
            case 1:
                shown.pane.SetFolded(on);
                break;
            case 2:
                shown.pane.SetAllInOne(on);
                break;
            case 3:
                shown.pane.SetWrap(on);
                break;
            case 4:
                shown.pane.SetZoom(on ? 2 : 1);
                break;
            case 5:
                shown.pane.SetComparison(on ? shown.comparison : nullptr);
                break;
            case 6:
                shown.original.SetText(on ? u"" : u"another text\r\nof two paragraphs");
                shown.Compare();
                break;
            case 7:
                shown.original.SetRich(texts.original);
                break;
            case 8:
                shown.pane.resize(on ? 1 : 900, on ? 1 : 500);
                break;
            default:
                shown.pane.SetCurrent(0);
                break;
        }
        QApplication::processEvents();
        shown.pane.View(Side::Modified).ScrollByPixels(on ? 100 : -40);
        if (shown.pane.Aligner().Aligned() && shown.pane.Aligner().Result() != nullptr) {
            EXPECT_EQ(shown.Page(Side::Original).Rows().Count(),
                      shown.Page(Side::Modified).Rows().Count());
        }
    }
}

}  // namespace
}  // namespace zorvane
