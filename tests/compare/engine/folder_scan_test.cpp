#include "compare/engine/folder_scan.h"

#include <chrono>
#include <cstdio>
#include <random>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/fake_folder.h"
#include "tests/support/folder_trees.h"

namespace zorvane {
namespace {

namespace fs = std::filesystem;
using Notes = std::vector<std::string>;

Notes Scan(const FolderTrees& trees, const FolderScanOptions& options = {}) {
    FolderScan scan;
    scan.Start(trees.Roots(), options, nullptr);
    scan.Join();
    return NotesOf(scan);
}

TEST(FolderScan, TellsSizeDateAndContentOfEachPair) {
    const FolderTrees trees;
    trees.WriteBoth("same", "12345", "12345");
    trees.WriteBoth("bytes", "12345", "12x45");
    trees.WriteBoth("longer", "1", "12");
    trees.WriteBoth("shorter", "123", "12");
    trees.WriteBoth("later", "1", "1");
    trees.SetTime(Side::Modified, "later", 1700000001);
    trees.WriteBoth("earlier", "1", "2");
    trees.SetTime(Side::Modified, "earlier", 1600000000);
    trees.WriteBoth("empty", "", "");
    trees.Write(Side::Original, "Name", "1");
    trees.Write(Side::Modified, "name", "1");
    trees.Write(Side::Original, "sub/gone", "1");
    trees.Write(Side::Modified, "new folder/inside", "1");
    trees.Write(Side::Original, "turned", "1");
    trees.Write(Side::Modified, "turned/inside", "1");
    const Notes expected{"< Name",         "~ bytes content", "~ earlier content date>",
                         "= empty",        "~ later date<",   "~ longer content size<",
                         "> name",         "= same",          "~ shorter content size>",
                         "< turned",       "> new folder/",   "> new folder/inside",
                         "< sub/",         "< sub/gone",      "> turned/",
                         "> turned/inside"};
    EXPECT_EQ(Scan(trees), expected);
}

struct ScanOptionRow {
    const char* name;
    void (*set)(FolderScanOptions&);
    Notes expected;
};

TEST(FolderScan, KeepsToItsOptions) {
    const FolderTrees trees;
    trees.WriteBoth("bytes.txt", "12345", "12x45");
    trees.WriteBoth("date.TXT", "1", "1");
    trees.SetTime(Side::Modified, "date.TXT", 1);
    trees.WriteBoth("same.doc", "1", "1");
    trees.WriteBoth(".hidden", "1", "1");
    trees.WriteBoth("sub/size", "1", "22");
    trees.Write(Side::Original, "left", "1");
    trees.Write(Side::Modified, "right", "1");
    trees.Write(Side::Modified, ".git/config", "1");
    const ScanOptionRow rows[] = {
        {"nothing set",
         [](FolderScanOptions&) {},
         {"= .hidden", "~ bytes.txt content", "~ date.TXT date>", "< left", "> right", "= same.doc",
          "> .git/", "> .git/config", "= sub/", "~ sub/size content size<"}},
        {"sizes and dates alone",
         [](FolderScanOptions& options) { options.rules.content = false; },
         {"= .hidden", "= bytes.txt", "~ date.TXT date>", "< left", "> right", "= same.doc",
          "> .git/", "> .git/config", "= sub/", "~ sub/size size<"}},
        {"no dates, and no equal ones",
         [](FolderScanOptions& options) {
             options.ignore_dates = true;
             options.show_same = false;
         },
         {"~ bytes.txt content", "< left", "> right", "> .git/", "> .git/config",
          "~ sub/size content size<"}},
        {"no dates, and equal ones alone: the date is told all the same",
         [](FolderScanOptions& options) {
             options.ignore_dates = true;
             options.show_different = options.show_only_original = options.show_only_modified =
                 false;
         },
         {"= .hidden", "~ date.TXT date>", "= same.doc", "= sub/"}},
        {"only in the Original",
         [](FolderScanOptions& options) {
             options.show_different = options.show_same = options.show_only_modified = false;
         },
         {"< left"}},
        {"types",
         [](FolderScanOptions& options) {
             options.file_types = "*.TXT  s*.d?c";
             options.hidden = false;
         },
         {"~ bytes.txt content", "~ date.TXT date>", "= same.doc", "= sub/"}},
        {"without subfolders and hidden files",
         [](FolderScanOptions& options) { options.subfolders = options.hidden = false; },
         {"~ bytes.txt content", "~ date.TXT date>", "< left", "> right", "= same.doc", "= sub/"}},
    };
    for (const ScanOptionRow& row : rows) {
        SCOPED_TRACE(row.name);
        FolderScanOptions options;
        row.set(options);
        EXPECT_EQ(Scan(trees, options), row.expected);
    }
}

TEST(FolderScan, LinksAndSpecialFilesAreComparedWithoutOpeningThem) {
    const FolderTrees trees;
    for (const Side side : kBothSides) {
        fs::create_symlink("target", trees.Path(side, "equal link"));
        fs::create_symlink(side == Side::Original ? "one" : "two", trees.Path(side, "other link"));
        fs::create_symlink("..", trees.Path(side, "loop"));
        ASSERT_EQ(mkfifo(trees.Path(side, "pipe").c_str(), 0600), 0);
        for (const char* name : {"equal link", "other link", "loop", "pipe"})
            trees.SetTime(side, name, 5);
    }
    trees.Write(Side::Original, "file or pipe", "", 5);
    ASSERT_EQ(mkfifo(trees.Path(Side::Modified, "file or pipe").c_str(), 0600), 0);
    trees.SetTime(Side::Modified, "file or pipe", 5);
    trees.Write(Side::Original, "file or link", "text", 5);
    trees.Write(Side::Modified, "target", "text", 5);
    fs::create_symlink("target", trees.Path(Side::Modified, "file or link"));
    trees.SetTime(Side::Modified, "file or link", 5);
    EXPECT_EQ(Scan(trees),
              (Notes{"= equal link", "~ file or link content size<", "~ file or pipe content",
                     "= loop", "~ other link content", "= pipe", "> target"}));
    FolderScanOptions follow;
    follow.rules.follow = FollowLink::Yes;
    follow.show_only_modified = follow.show_only_original = false;
    EXPECT_EQ(Scan(trees, follow),
              (Notes{"~ equal link content size>", "= file or link", "~ file or pipe content",
                     "= loop", "~ other link content", "= pipe"}));
}

TEST(FolderScan, WhatCannotBeReadIsToldInARecordAndTheRestGoesOn) {
    FakeEntry locked = FakeFile("12345");
    locked.open_fault = EACCES;
    FakeEntry vanished = FakeFile("12345");
    vanished.open_fault = ENOENT;
    FakeEntry broken = FakeFile("1234567890123");
    broken.read_fault = EIO;
    FakeEntry shrinking = FakeFile("12345");
    shrinking.told_size = 9;
    FakeEntry folder = FakeTree({{"unseen", FakeFile("1")}});
    folder.list_fault = EACCES;
    const FakeEntry original = FakeTree({{"broken", broken},
                                         {"folder", folder},
                                         {"last", FakeFile("1")},
                                         {"locked", FakeFile("12345")},
                                         {"shrinking", FakeFile("123451234")},
                                         {"single", vanished},
                                         {"vanished", vanished}});
    const FakeEntry modified = FakeTree({{"broken", FakeFile("1234567890123")},
                                         {"folder", FakeTree({{"unknown", FakeFile("1")}})},
                                         {"last", FakeFile("1")},
                                         {"locked", locked},
                                         {"shrinking", shrinking},
                                         {"vanished", FakeFile("12345")}});
    for (const int threads : {1, 8}) {
        SCOPED_TRACE(threads);
        FolderScanOptions options;
        options.threads = threads;
        FolderScan scan;
        scan.StartIn(
            {std::make_unique<FakeFolder>(original), std::make_unique<FakeFolder>(modified)},
            {"/old", "C:\\new"}, options, nullptr);
        scan.Join();
        EXPECT_EQ(NotesOf(scan), (Notes{"! broken", "= last", "! locked", "! shrinking", "! single",
                                        "! vanished", "! folder/"}));
        Notes faults;
        for (std::size_t index = 0; index < scan.Faults().size(); ++index)
            faults.push_back(std::to_string(scan.Faults()[index].code) + " " +
                             scan.Faults()[index].message);
        EXPECT_EQ(
            faults,
            (Notes{"5 /old/broken: Input/output error", "13 C:\\new\\locked: Permission denied",
                   "-1 /old/shrinking: one of the two files became shorter while it was read",
                   "2 /old/single: No such file or directory",
                   "2 /old/vanished: No such file or directory",
                   "13 /old/folder/: Permission denied"}));
    }
}

// The system tells sizes of its own files that are none.
TEST(FolderScan, ReadsFilesOfNoKnownSizeToTheirEnds) {
    const auto told = [](const char* bytes, std::int64_t size) {
        FakeEntry entry = FakeFile(bytes);
        entry.told_size = size;
        return entry;
    };
    const FakeEntry original = FakeTree({{"no size", told("1234567", 0)},
                                         {"no size, longer", told("1234567", 0)},
                                         {"no size, same", told("1234567", 0)},
                                         {"too much", told("on", 4096)},
                                         {"too much, same", told("on", 4096)}});
    const FakeEntry modified = FakeTree({{"no size", told("1234568", 0)},
                                         {"no size, longer", told("12345678", 0)},
                                         {"no size, same", told("1234567", 0)},
                                         {"too much", told("of", 4096)},
                                         {"too much, same", told("on", 4096)}});
    FolderScan scan;
    scan.StartIn({std::make_unique<FakeFolder>(original), std::make_unique<FakeFolder>(modified)},
                 {"/a", "/b"}, {}, nullptr);
    scan.Join();
    EXPECT_EQ(NotesOf(scan), (Notes{"~ no size content", "~ no size, longer content",
                                    "= no size, same", "~ too much content", "= too much, same"}));
    EXPECT_EQ(scan.Faults().size(), 0U);
}

// ---- against another program ----

// Names that one program would print in a way of its own are left out.
void FillTree(const FolderTrees& trees, int files, unsigned seed) {
    std::mt19937 random(seed);
    for (int file = 0; file < files; ++file) {
        const std::string name = "d" + std::to_string(file / 400) + "/e" +
                                 std::to_string(file / 40 % 10) + "/name " + std::to_string(file);
        std::string bytes(random() % 600, static_cast<char>('a' + random() % 26));
        const auto kind = static_cast<int>(random() % 100);
        if (kind != 0)
            trees.Write(Side::Original, name, bytes);
        if (kind == 2 && !bytes.empty())
            bytes[random() % bytes.size()] ^= 1;
        if (kind == 3)
            bytes += "x";
        if (kind != 1)
            trees.Write(Side::Modified, name, bytes, 1700000000 + (kind == 4 ? 1 : 0));
    }
    trees.WriteBoth("large", std::string(700000, 'x') + "1", std::string(700000, 'x') + "2");
    trees.WriteBoth("large, same", std::string(700000, 'x'), std::string(700000, 'x'));
}

std::multiset<std::string> DiffVerdicts(const FolderTrees& trees) {
    const std::string command =
        "cd " + trees.Folder().Path() + " && LC_ALL=C diff -rq --no-dereference a b 2>&1";
    std::multiset<std::string> verdicts;
    FILE* pipe = popen(command.c_str(), "r");
    char line[4096];
    while (pipe != nullptr && fgets(line, sizeof line, pipe) != nullptr)
        verdicts.emplace(line, std::string_view(line).size() - 1);
    if (pipe != nullptr)
        pclose(pipe);
    return verdicts;
}

// In the words of that program, which tells of a one-sided folder and not of what is in it.
std::multiset<std::string> OwnVerdicts(const FolderScan& scan) {
    std::multiset<std::string> verdicts;
    std::string inside = "/";
    for (std::size_t index = 0; index < scan.Count(); ++index) {
        const ScannedEntry& entry = scan.Entry(index);
        std::string path = scan.PathBelow(index);
        if (entry.InBoth()) {
            const char* kind = entry.original == EntryKind::Link ? "Symbolic links a/" : "Files a/";
            if (entry.content == PairContent::Different)
                verdicts.insert(kind + path + " and b/" + path + " differ");
            continue;
        }
        if (path.starts_with(inside))
            continue;
        if (entry.IsFolder()) {
            inside = path;
            path.pop_back();
        }
        const std::size_t slash = path.rfind('/');
        const std::string folder = slash == std::string::npos ? "" : "/" + path.substr(0, slash);
        verdicts.insert("Only in " + std::string(entry.Has(Side::Original) ? "a" : "b") + folder +
                        ": " + path.substr(slash + 1));
    }
    return verdicts;
}

TEST(FolderScan, AgreesWithDiffAndDoesNotDependOnThreads) {
    if (std::system("diff --version > /dev/null 2>&1") != 0)
        GTEST_SKIP() << "there is no diff to ask";
    for (const int files : {0, 300, 3000}) {
        SCOPED_TRACE(files);
        const FolderTrees trees;
        FillTree(trees, files, 7);
        trees.Write(Side::Original, "\xFF\xFE odd", "1");
        trees.WriteBoth("- dash", "1", "2");
        std::string deep = "deep";
        for (int level = 0; level < 100; ++level)
            deep += "/d";
        trees.WriteBoth(deep + "/f", "1", "2");
        std::filesystem::create_directories(trees.Path(Side::Original, "empty"));
        std::filesystem::create_directories(trees.Path(Side::Modified, "empty"));
        std::filesystem::create_directories(trees.Path(Side::Modified, "only, empty"));
        for (const char* link : {"to the same", "to another", "dangling"}) {
            for (const Side side : kBothSides)
                std::filesystem::create_symlink(
                    *link == 't' && link[3] == 'a' && side == Side::Original ? "large" : "none",
                    trees.Path(side, link));
        }
        Notes first;
        for (const int threads : {1, 2, 8}) {
            SCOPED_TRACE(threads);
            FolderScanOptions options;
            options.threads = threads;
            FolderScan scan;
            scan.Start(trees.Roots(), options, nullptr);
            scan.Join();
            if (first.empty()) {
                first = NotesOf(scan);
                EXPECT_EQ(OwnVerdicts(scan), DiffVerdicts(trees));
            }
            EXPECT_EQ(NotesOf(scan), first);
            EXPECT_EQ(scan.Faults().size(), 0U);
        }
    }
}

TEST(FolderScan, StopsSoonAndKeepsWhatItHas) {
    const FolderTrees trees;
    FillTree(trees, 2000, 9);
    for (const int threads : {1, 8}) {
        FolderScanOptions options;
        options.threads = threads;
        FolderScan scan;
        scan.Start(trees.Roots(), options, nullptr);
        scan.Join();
        const Notes whole = NotesOf(scan);
        scan.Start(trees.Roots(), options, nullptr);
        while (scan.Busy() && scan.Count() < 100)
            std::this_thread::yield();
        const auto before = std::chrono::steady_clock::now();
        scan.Release();
        EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::milliseconds(500));
        EXPECT_FALSE(scan.Busy());
        const Notes part = NotesOf(scan);
        ASSERT_LE(part.size(), whole.size());
        EXPECT_TRUE(std::equal(part.begin(), part.end(), whole.begin()));
    }
    FakeEntry endless = FakeTree({});
    endless.endless = true;
    FolderScan scan;
    scan.StartIn({std::make_unique<FakeFolder>(endless), std::make_unique<FakeFolder>(endless)},
                 {"/a", "/b"}, {}, nullptr);
    scan.Release();  // would wait for ever
    EXPECT_EQ(scan.Count(), 0U);
}

}  // namespace
}  // namespace zorvane
