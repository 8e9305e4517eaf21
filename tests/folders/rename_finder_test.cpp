#include "folders/rename_finder.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "common/platform/files.h"
#include "folders/like_texts.h"
#include "tests/support/fake_folder.h"
#include "tests/support/folder_trees.h"

namespace zorvane {
namespace {

using Notes = std::vector<std::string>;

std::string Lines(int first, int last) {
    std::string text;
    for (int line = first; line <= last; ++line)
        text += "This is line " + std::to_string(line * 7919) + " of it\n";
    return text;
}

Notes Renames(const FolderTrees& trees, bool by_text = true) {
    FolderScan scan;
    scan.Start(trees.Roots(), {}, nullptr);
    scan.Join();
    Notes first;
    for (const int threads : {1, 4}) {
        RenameOptions options;
        options.by_text = by_text;
        options.threads = threads;
        Notes notes;
        for (const RenamedEntry& entry : FindRenames(scan, trees.Roots(), options))
            notes.push_back(scan.PathBelow(static_cast<std::size_t>(entry.original)) + " > " +
                            scan.PathBelow(static_cast<std::size_t>(entry.modified)) + " " +
                            std::to_string(entry.percent) + (entry.folder ? " folder" : ""));
        if (threads == 1)
            first = notes;
        EXPECT_EQ(notes, first);
    }
    return first;
}

TEST(RenameFinder, PairsEqualFilesByNameFirst) {
    const FolderTrees trees;
    trees.Write(Side::Original, "a", "same bytes");
    trees.Write(Side::Original, "z", "same bytes");
    trees.Write(Side::Modified, "b", "same bytes");
    trees.Write(Side::Modified, "sub/z", "same bytes");
    trees.Write(Side::Original, "alone", "other text");  // of the same length
    trees.Write(Side::Original, "empty", "");
    trees.Write(Side::Modified, "nothing", "");
    trees.WriteBoth("kept", "same bytes", "same bytes");  // in both: nobody's partner
    EXPECT_EQ(Renames(trees), (Notes{"a > b 100", "z > sub/z 100"}));
}

// What a reader gives of a document, and nothing of its bytes.
TEST(RenameFinder, PairsDocumentsByTheirWords) {
    const FolderTrees trees;
    const std::string package("PK\0", 3);
    trees.Write(Side::Original, "old.docx", package + Lines(1, 100));
    trees.Write(Side::Modified, "new.docx", package + Lines(1, 80));
    trees.Write(Side::Original, "broken.docx", Lines(200, 300));
    trees.Write(Side::Modified, "also broken.docx", Lines(200, 290));
    EXPECT_EQ(Renames(trees), (Notes{"broken.docx > also broken.docx 90"}));
    FolderScan scan;
    scan.Start(trees.Roots(), {}, nullptr);
    scan.Join();
    RenameOptions options;
    options.document_text = [&](const std::string& path) -> std::optional<std::string> {
        const Result<std::string> bytes = ReadWholeFile(path);
        if (!bytes.ok() || !bytes.value().starts_with(package))
            return std::nullopt;
        return bytes.value().substr(package.size());
    };
    const std::vector<RenamedEntry> found = FindRenames(scan, trees.Roots(), options);
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(scan.PathBelow(static_cast<std::size_t>(found[0].original)), "old.docx");
    EXPECT_EQ(scan.PathBelow(static_cast<std::size_t>(found[0].modified)), "new.docx");
    EXPECT_NEAR(found[0].percent, 80, 2);
}

TEST(RenameFinder, PairsTextsThatAreAlikeBestFirst) {
    const FolderTrees trees;
    trees.Write(Side::Original, "one.txt", Lines(1, 100));
    trees.Write(Side::Original, "other.txt", Lines(500, 600));
    trees.Write(Side::Modified, "near.txt", Lines(11, 100));
    trees.Write(Side::Modified, "nearer.txt", Lines(2, 100));
    trees.Write(Side::Modified, "far.txt", Lines(590, 800));
    trees.Write(Side::Original, "binary", std::string("\0x", 2) + Lines(1, 50));
    const Notes found = Renames(trees);
    ASSERT_EQ(found.size(), 1U);
    EXPECT_TRUE(found[0].starts_with("one.txt > nearer.txt 9")) << found[0];
    EXPECT_EQ(Renames(trees, false), Notes{});
}

TEST(RenameFinder, PairsTextsOfWhichEachLineWasTouched) {
    const FolderTrees trees;
    std::string old_text;
    std::string wrapped;
    std::string unlike;
    for (int line = 0; line < 30; ++line) {
        const std::string number = std::to_string(line * 7919);
        old_text += "The clause " + number + " binds whoever signs " + number + " below\n";
        wrapped += "The clause " + number + " binds whoever\nsigned " + number + " below ";
        unlike += "Below " + number + " signs whoever binds clause " + number + " the\n";
    }
    trees.Write(Side::Original, "old.txt", old_text);
    trees.Write(Side::Modified, "wrapped.txt", wrapped);
    trees.Write(Side::Modified, "unlike.txt", unlike);
    EXPECT_EQ(Renames(trees), (Notes{"old.txt > wrapped.txt 69"}));
}

TEST(RenameFinder, AFolderThatMovedIsOne) {
    const FolderTrees trees;
    for (const char* name : {"1", "2", "deep/3"}) {
        trees.Write(Side::Original, std::string("old/") + name, std::string("text ") + name);
        trees.Write(Side::Modified, std::string("new/place/") + name, std::string("text ") + name);
        trees.Write(Side::Original, std::string("grown/") + name, std::string("words ") + name);
        trees.Write(Side::Modified, std::string("larger/") + name, std::string("words ") + name);
        trees.Write(Side::Original, std::string("mixed/") + name, std::string("bytes ") + name);
    }
    for (const char* name : {"old/empty", "new/place/empty", "grown/empty"})
        trees.Write(std::string_view(name).starts_with("new") ? Side::Modified : Side::Original,
                    name, "");
    // Both hold a copy of one file, and each takes its own.
    for (const char* name : {"p/COPYING", "q/COPYING", "p/x", "q/y"})
        trees.Write(Side::Original, name, name[2] == 'C' ? "all may" : name);
    for (const char* name : {"r/COPYING", "s/COPYING", "r/y", "s/x"})
        trees.Write(Side::Modified, name,
                    name[2] == 'C' ? "all may"
                                   : std::string(1, name[2] == 'x' ? 'p' : 'q') + "/" + name[2]);
    trees.Write(Side::Modified, "larger/4", "came with it, and is not moved");
    trees.Write(Side::Modified, "swapped/2", "bytes 1");
    trees.Write(Side::Modified, "swapped/1", "bytes 2");
    trees.Write(Side::Modified, "swapped/deep/3", "bytes deep/3");
    EXPECT_EQ(Renames(trees),
              (Notes{"grown/1 > larger/1 100", "grown/2 > larger/2 100",
                     "grown/deep/ > larger/deep/ 100 folder", "mixed/1 > swapped/2 100",
                     "mixed/2 > swapped/1 100", "mixed/deep/ > swapped/deep/ 100 folder",
                     "old/ > new/place/ 100 folder", "p/ > s/ 100 folder", "q/ > r/ 100 folder"}));
}

// Nobody knows what else is in it.
TEST(RenameFinder, AFolderThatCouldNotBeReadWholeHasNotMoved) {
    const FolderTrees trees;
    trees.Write(Side::Original, "old/1", "text");
    trees.Write(Side::Modified, "new/1", "text");
    FakeEntry shut = FakeTree({});
    shut.list_fault = EACCES;
    const FakeEntry inside = FakeTree({{"1", FakeFile("text")}, {"shut", shut}});
    const FakeEntry original = FakeTree({{"old", inside}});
    const FakeEntry modified = FakeTree({{"new", inside}});
    FolderScan scan;
    scan.StartIn({std::make_unique<FakeFolder>(original), std::make_unique<FakeFolder>(modified)},
                 trees.Roots(), {}, nullptr);
    scan.Join();
    const std::vector<RenamedEntry> found = FindRenames(scan, trees.Roots(), {});
    ASSERT_EQ(found.size(), 1U);
    EXPECT_FALSE(found[0].folder);
}

TEST(LikeTexts, ShareByTheWeightOfTheirLines) {
    const TextWeights one("short\n" + std::string(95, 'x') + "\n");
    const TextWeights two("  short \r\n" + std::string(95, 'y'));
    EXPECT_EQ(PercentShared(one, one), 100);
    EXPECT_EQ(PercentShared(one, two), 5);
    EXPECT_EQ(PercentShared(one, TextWeights("")), 0);
    EXPECT_EQ(PercentShared(TextWeights("a\na\na\n"), TextWeights("a\n")), 33);
    const auto words = [](const char* one_text, const char* other) {
        return PercentShared(TextWeights(one_text, TextPieces::Words),
                             TextWeights(other, TextPieces::Words));
    };
    EXPECT_EQ(words("one, two\nthree!", "one two three"), 100);
    EXPECT_EQ(words("one two", "two one"), 0) << "the order counts";
    EXPECT_EQ(words("\xE6\x97\xA5\xE6\x9C\xAC\xE8\xAA\x9E", "\xE6\x97\xA5\xE6\x9C\xAC"), 33)
        << "each character is a word";
}

}  // namespace
}  // namespace zorvane
