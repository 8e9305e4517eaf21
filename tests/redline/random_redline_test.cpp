// Seeded pairs with many edits at once, of every kind that the writer knows.
#include <cstdlib>
#include <filesystem>
#include <vector>

#include "tests/redline/random_pairs.h"
#include "tests/support/shell_run.h"

namespace zorvane::random_redline_test {
namespace {

using namespace random_pairs;

// ZORVANE_REDLINE_PAIRS=1000 for a long look.
std::uint32_t Pairs(std::uint32_t everyday) {
    const char* const asked = std::getenv("ZORVANE_REDLINE_PAIRS");
    return asked == nullptr ? everyday : static_cast<std::uint32_t>(std::atoi(asked));
}

TEST(RandomRedline, GivesBothDocumentsBack) {
    for (std::uint32_t seed = 0; seed < Pairs(150); ++seed) {
        Generator generator(seed);
        Story story = generator.MakeStory();
        const std::string original = FileOf(story, 3, seed % 3 ? "head of it" : "");
        const std::string old_odt = OdtOf(story, 3, seed % 3 ? "head of it" : "");
        std::string edits = std::to_string(seed);
        for (std::size_t i = 1 + generator.Below(8); i > 0; --i)
            edits.append(", ").append(generator.Change(story, generator.AnyEdit()));
        SCOPED_TRACE(edits);
        const std::string modified = FileOf(story, 4, seed % 4 ? "head of all" : "");
        const std::string new_odt = OdtOf(story, 4, seed % 4 ? "head of all" : "");
        RedlineRequest request;
        RedlineRequest as_large;
        as_large.large_texts = 0;
        const WrittenRedline odt = OdtRedlineOf(old_odt, new_odt);
        EXPECT_EQ(OdtLawBreach(old_odt, new_odt, odt), "");
        EXPECT_EQ(OdtRedlineOf(old_odt, new_odt, as_large).bytes, odt.bytes);
        for (const bool looks : {false, true}) {
            request.track_formatting = looks;
            const WrittenRedline written = RedlineOf(original, modified, request);
            EXPECT_EQ(LawBreach(original, modified, written.bytes, written.headers_left_out, looks),
                      "");
            as_large.track_formatting = looks;
            EXPECT_EQ(RedlineOf(original, modified, as_large).bytes, written.bytes);
        }
    }
}

// ---- an independent reader ----

std::string ReadByPandoc(TempFolder& folder, const std::string& document, const char* changes) {
    folder.Write("d.docx", document);
    const ShellRun run =
        RunShell(folder, "cd '" + folder.Path() + "' && pandoc --track-changes=" + changes +
                             " -t plain --wrap=none d.docx >out 2>err");
    EXPECT_EQ(run.status, 0) << run.error;
    std::string shown;
    for (const char letter : run.output) {
        if (letter != '\n' || !shown.ends_with('\n'))
            shown += letter;
    }
    return shown;
}

TEST(RandomRedline, IsReadLikewiseByPandoc) {
    TempFolder folder;
    if (RunShell(folder, "cd '" + folder.Path() + "' && pandoc --version >out 2>err").status != 0)
        GTEST_SKIP() << "no pandoc here";
    for (std::uint32_t seed = 0; seed < Pairs(6); ++seed) {
        Generator generator(seed);
        Story story = generator.MakeStory();
        const bool notes = seed % 2 == 0;
        for (Block& block : story) {
            block.box = block.picture = block.list = false;
            block.note = notes ? block.note : "";
        }
        const std::string original = FileOf(story, 3, "");
        std::string edits = std::to_string(seed);
        for (int done = 0; done < 4;) {
            const Edit edit = generator.AnyEdit();
            const ByPandoc pandoc = kEdits[edit].pandoc;
            if (pandoc == ByPandoc::NotRead || (notes && pandoc == ByPandoc::WithoutNotes) ||
                (!notes && edit == NoteText))
                continue;
            edits.append(", ").append(generator.Change(story, edit));
            ++done;
        }
        SCOPED_TRACE(edits);
        const std::string modified = FileOf(story, 4, "");
        const WrittenRedline written = RedlineOf(original, modified);
        if (written.untracked[UntrackedCount::TablesTwice] > 0)
            continue;  // marked rows
        const std::string& redline = written.bytes;
        EXPECT_EQ(ReadByPandoc(folder, redline, "accept"),
                  ReadByPandoc(folder, modified, "accept"));
        EXPECT_EQ(ReadByPandoc(folder, redline, "reject"),
                  ReadByPandoc(folder, original, "accept"));
    }
}

}  // namespace
}  // namespace zorvane::random_redline_test
