#include "common/tree_walk.h"

#include <filesystem>
#include <fstream>
#include <string>
#include <sys/stat.h>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/fake_folder.h"
#include "tests/support/temp_folder.h"

namespace zorvane {
namespace {

namespace fs = std::filesystem;

char SideLetter(const PerSide<bool>& present) {
    return present.original ? (present.modified ? '=' : '<') : '>';
}

// Notes what is told, in the order in which it is published: "=a/b" a file, "<c/" a folder.
class NoteJob : public TreeJob {
  public:
    bool WantsFile(std::string_view name) override { return name != "unwanted"; }
    FolderUse UseOf(std::string_view name) override {
        return name == "skipped" ? FolderUse::Skip
               : name == "named" ? FolderUse::NameOnly
                                 : FolderUse::Walk;
    }
    std::unique_ptr<TreeFindings> Folder(const std::shared_ptr<const TreeFolder>& folder,
                                         const PerSide<SystemError>& errors) override {
        std::string note = SideLetter(folder->present) + folder->Below();
        for (const Side side : kBothSides) {
            if (errors[side])
                note += " !" + std::to_string(errors[side].code);
        }
        return std::make_unique<Findings>(*this, std::vector<std::string>{note});
    }
    std::unique_ptr<TreeFindings> Files(const std::shared_ptr<const TreeFolder>& folder,
                                        const PerSide<FolderHandle*>& handles,
                                        std::span<const TreeEntry> files, int /*thread*/,
                                        const OrderedWork& /*stop*/) override {
        std::vector<std::string> told;
        for (const TreeEntry& file : files) {
            const PerSide<bool> present{file.kinds.original != EntryKind::None,
                                        file.kinds.modified != EntryKind::None};
            told.push_back(SideLetter(present) + folder->Below() + std::string(file.Name()));
            for (const Side side : kBothSides) {
                EntryFacts facts;
                if (present[side] && (handles[side] == nullptr ||
                                      handles[side]->Facts(file.name, FollowLink::No, facts) ||
                                      facts.kind != file.kinds[side]))
                    told.back() += " ?";
            }
        }
        return std::make_unique<Findings>(*this, std::move(told));
    }
    std::vector<std::string> notes;

  private:
    class Findings : public TreeFindings {
      public:
        Findings(NoteJob& job, std::vector<std::string> notes)
            : job_(job), notes_(std::move(notes)) {}
        void Publish() override {
            job_.notes.insert(job_.notes.end(), notes_.begin(), notes_.end());
        }

      private:
        NoteJob& job_;
        std::vector<std::string> notes_;
    };
};

std::vector<std::string> Walk(PerSide<std::unique_ptr<FolderHandle>> roots, int threads) {
    NoteJob job;
    OrderedWork work(threads);
    work.Start(WalkTree(std::move(roots), job));
    work.Join();
    return job.notes;
}

std::vector<std::string> WalkFakes(const FakeEntry& original, const FakeEntry& modified,
                                   int threads = 2) {
    return Walk({std::make_unique<FakeFolder>(original), std::make_unique<FakeFolder>(modified)},
                threads);
}

TEST(TreeWalk, MergesTwoTreesInTheDocumentedOrder) {
    const FakeEntry file = FakeFile("x");
    FakeEntry locked = FakeTree({{"lost", file}});
    locked.list_fault = EACCES;
    const FakeEntry original = FakeTree({{"b", file},
                                         {"Z", file},
                                         {"sub", FakeTree({{"one", file}, {"deep", FakeTree({})}})},
                                         {"mixed", file},
                                         {"named", FakeTree({{"unseen", file}})},
                                         {"skipped", FakeTree({{"unseen", file}})},
                                         {"locked", locked},
                                         {"unwanted", file}});
    const FakeEntry modified = FakeTree({{"a", file},
                                         {"b", file},
                                         {"sub", FakeTree({{"two", file}})},
                                         {"mixed", FakeTree({{"inside", file}})},
                                         {"locked", FakeTree({{"untold", file}})}});
    const std::vector<std::string> expected{
        "=",         "<Z",           ">a",       "=b",
        "<mixed",    "=locked/ !13", ">mixed/",  ">mixed/inside",
        "<named/",   "=sub/",        "<sub/one", ">sub/two",
        "<sub/deep/"};
    EXPECT_EQ(WalkFakes(original, modified), expected);
    NoteJob one_sided;
    OrderedWork work(1);
    work.Start(WalkTree({std::make_unique<FakeFolder>(modified), nullptr}, one_sided));
    work.Join();
    EXPECT_EQ(one_sided.notes.front(), "<");
    EXPECT_EQ(one_sided.notes.back(), "<sub/two");
}

TEST(TreeWalk, GivesTheSameOrderForAnyNumberOfThreads) {
    FakeEntry original = FakeTree({});
    FakeEntry modified = FakeTree({});
    for (int folder = 0; folder < 600; ++folder) {  // more than one chunk of subfolders
        FakeEntry& tree = folder % 3 == 0 ? original : modified;
        FakeEntry below = FakeTree({});
        for (int file = 0; file < folder % 80; ++file)
            below.entries[std::to_string(file)] = FakeFile("x");
        tree.entries["f" + std::to_string(folder)] = below;
    }
    const std::vector<std::string> one = WalkFakes(original, modified, 1);
    EXPECT_GT(one.size(), 20000U);
    EXPECT_EQ(WalkFakes(original, modified, 2), one);
    EXPECT_EQ(WalkFakes(original, modified, 8), one);
}

TEST(FolderHandle, ReadsARealTreeWithOddNames) {
    const TempFolder folder;
    const std::string odd = "odd \xFF\n\\name";
    folder.Write(odd, "12345");
    fs::create_directory(folder.Path("sub"));
    fs::create_symlink("nowhere", folder.Path("link"));
    ASSERT_EQ(mkfifo(folder.Path("pipe").c_str(), 0600), 0);
    std::unique_ptr<FolderHandle> handle;
    ASSERT_FALSE(OpenFolder(folder.Path(), handle));
    FolderListing listing;
    ASSERT_FALSE(handle->List(listing, [] { return false; }));
    listing.Sort();
    std::vector<std::pair<std::string, EntryKind>> seen;
    for (std::size_t index = 0; index < listing.size(); ++index)
        seen.emplace_back(listing.Name(index), listing.Kind(index));
    const std::vector<std::pair<std::string, EntryKind>> expected{{"link", EntryKind::Link},
                                                                  {odd, EntryKind::File},
                                                                  {"pipe", EntryKind::Special},
                                                                  {"sub", EntryKind::Folder}};
    EXPECT_EQ(seen, expected);
    EntryFacts facts;
    EXPECT_FALSE(handle->Facts(odd.c_str(), FollowLink::No, facts));
    EXPECT_EQ(facts.size, 5);
    std::string text;
    EXPECT_FALSE(handle->ReadLink("link", text));
    EXPECT_EQ(text, "nowhere");
    std::unique_ptr<OpenedFile> file;
    EXPECT_EQ(handle->OpenFile("link", FollowLink::No, file).code, ELOOP);
    EXPECT_EQ(handle->OpenFile("gone", FollowLink::No, file).code, ENOENT);
    std::unique_ptr<FolderHandle> below;
    EXPECT_EQ(handle->OpenFolder("link", below).code, ENOTDIR);
    EXPECT_EQ(OpenFolder(folder.Path("none"), handle).code, ENOENT);
}

TEST(TreeWalk, WalksATreeDeeperThanAPathMayBeLong) {
    const TempFolder folder;
    const fs::path home = fs::current_path();
    const std::string name(100, 'd');
    fs::current_path(folder.Path());
    constexpr int kDepth = 60;  // 6,000 bytes
    for (int depth = 0; depth < kDepth; ++depth) {
        fs::create_directory(name);
        fs::current_path(name);
    }
    std::ofstream("last") << "x";
    fs::current_path(home);
    std::unique_ptr<FolderHandle> root;
    ASSERT_FALSE(OpenFolder(folder.Path(), root));
    const std::vector<std::string> notes = Walk({std::move(root), nullptr}, 2);
    ASSERT_EQ(notes.size(), kDepth + 2U);
    EXPECT_TRUE(notes.back().ends_with(name + "/last"));
}

}  // namespace
}  // namespace zorvane
