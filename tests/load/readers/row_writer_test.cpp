#include "load/readers/sink/row_writer.h"

#include <string>

#include <gtest/gtest.h>

#include "tests/support/shown_document.h"

namespace zorvane::row_writer_test {
namespace {

// "p" with a digit is a paragraph, "[" and "]" a row, "(" and ")" a cell.
std::string Written(std::string_view steps) {
    return Shown([steps](DocumentSink& sink, ReadMonitor& /*monitor*/) {
        RowWriter writer(sink);
        for (const char step : steps) {
            if (step == '[') {
                writer.BeginRow();
            } else if (step == ']') {
                writer.EndRow();
            } else if (step == '(') {
                writer.BeginCell();
            } else if (step == ')') {
                writer.EndCell(CharFormat());
            } else {
                writer.BeginParagraph(ParagraphFormat());
                writer.Text(std::string_view(&step, 1), CharFormat());
                writer.EndParagraph();
            }
        }
        return ReadEnd::Ok();
    });
}

TEST(RowWriter, MakesLinesOfParagraphsInCells) {
    struct Row {
        std::string_view steps;
        std::string_view shown;
    };
    for (const Row& row : {
             Row{"ab", "a|b|"},
             Row{"a[(b)(c)]d", "a|b!c!|d|"},
             Row{"[(ab)()(c)]", "a/b!!c!|"},
             Row{"[]", "|"},
             Row{"[([(a)(b)])(c)]", "a>b!c!|"},
             Row{"[(x[(a)(b)][(c)]y)]", "x/a>b/c/y!|"},
             Row{"[([(a)([(b)(c)])])]", "a>b>c!|"},
             Row{"[([(ab)(c)])][(d)]", "a/b>c!|d!|"},
         }) {
        SCOPED_TRACE(row.steps);
        EXPECT_EQ(Written(row.steps), row.shown);
    }
}

TEST(RowWriter, SendsOnlyWellFormedText) {
    EXPECT_EQ(Shown([](DocumentSink& sink, ReadMonitor& /*monitor*/) {
                  RowWriter writer(sink);
                  writer.BeginParagraph(ParagraphFormat());
                  writer.Text("a\xFF", CharFormat());
                  writer.Text("", CharFormat());
                  writer.Text("b ", CharFormat());
                  writer.EndParagraph();
                  return ReadEnd::Ok();
              }),
              "a\uFFFDb |");
}

}  // namespace
}  // namespace zorvane::row_writer_test
