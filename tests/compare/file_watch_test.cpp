#include "compare/file_watch.h"

#include <map>

#include <gtest/gtest.h>

#include "common/process_state.h"
#include "compare/unsaved_edits.h"
#include "tests/support/fakes.h"
#include "tests/support/file_answers.h"

namespace zorvane::file_watch_test {
namespace {

// A disk of stamps, looked at in steps of half a second.
class DiskTest : public testing::Test {
  protected:
    void Show(Side side, const std::string& path) {
        watch_.Watch(side, path, watch_.StampOf(path));
    }
    /// What is told in the next `seconds`: "+a" for a changed file, "-a" for one that is gone.
    std::string Told(double seconds) {
        std::string told;
        for (int step = 0; step < static_cast<int>(seconds * 2); ++step) {
            now_ += 500;
            for (const FileNotice& notice : watch_.Poll(now_)) {
                told += (notice.news == FileNews::Gone ? "-" : "+") + notice.path;
                told += notice.sides.original && notice.sides.modified ? "*" : "";
            }
        }
        return told;
    }

    std::map<std::string, FileStamp> disk_{{"a", {1, 1, 1, 1}}, {"b", {2, 2, 2, 1}}};
    int looks_ = 0;
    FileWatch watch_{[this](const std::string& path) -> std::optional<FileStamp> {
        ++looks_;
        const auto found = disk_.find(path);
        return found == disk_.end() ? std::nullopt : std::optional(found->second);
    }};
    std::uint32_t now_ = 0xFFFFFFFF - 3000;  // the clock wraps in mid-test
};

TEST_F(DiskTest, EachKindOfChangeIsToldOnce) {
    struct Row {
        const char* name;
        FileStamp stamp;
    };
    Show(Side::Original, "a");
    EXPECT_EQ(Told(5), "");
    for (const Row& row :
         {Row{"size", {9, 1, 1, 1}}, Row{"time", {9, 9, 1, 1}}, Row{"replaced", {9, 9, 9, 1}}}) {
        SCOPED_TRACE(row.name);
        disk_["a"] = row.stamp;
        EXPECT_EQ(Told(10), "+a");
        EXPECT_EQ(Told(10), "");
    }
    disk_.erase("a");
    EXPECT_EQ(Told(10), "-a");
    disk_["a"] = {9, 9, 9, 1};
    EXPECT_EQ(Told(10), "+a") << "another file under the name";
    disk_["a"] = {1, 1, 1, 1};
    EXPECT_EQ(Told(10), "") << "the one that is shown, put back";
}

TEST_F(DiskTest, AFileIsToldOfWhenItHasBeenStill) {
    Show(Side::Modified, "b");
    for (int second = 0; second < 20; ++second) {
        disk_["b"].size += 10;
        EXPECT_EQ(Told(1), "");
    }
    EXPECT_EQ(Told(4), "+b");
    disk_.erase("b");
    EXPECT_EQ(Told(1), "");
    disk_["b"] = {7, 7, 7, 1};
    EXPECT_EQ(Told(5), "+b") << "replaced: it was missing for an instant only";
}

TEST_F(DiskTest, OwnSavesAndLoadsAreNoNews) {
    Show(Side::Original, "a");
    Show(Side::Modified, "b");
    disk_["a"] = {5, 5, 5, 1};
    Show(Side::Original, "a");
    EXPECT_EQ(Told(5), "");
    disk_["b"] = {6, 6, 6, 1};
    Show(Side::Modified, "b");
    EXPECT_EQ(Told(5), "");
    watch_.Forget(Side::Modified);
    disk_.erase("b");
    EXPECT_EQ(Told(5), "");
}

// What is read may be older than what stands there when the load is done.
TEST_F(DiskTest, AChangeDuringTheLoadIsTold) {
    const std::optional<FileStamp> before = watch_.StampOf("a");
    disk_["a"] = {5, 5, 5, 1};
    watch_.Watch(Side::Original, "a", before);
    EXPECT_EQ(Told(5), "+a");
}

TEST_F(DiskTest, OneFileOnBothSidesIsOneNotice) {
    Show(Side::Original, "a");
    Show(Side::Modified, "a");
    disk_["a"] = {5, 5, 5, 1};
    EXPECT_EQ(Told(5), "+a*");
    Show(Side::Original, "nothing there");
    EXPECT_EQ(Told(5), "");
}

TEST_F(DiskTest, IsLookedAtOnceASecond) {
    Show(Side::Original, "a");
    looks_ = 0;
    for (int poll = 0; poll < 100; ++poll)
        watch_.Poll(now_ += 100);
    EXPECT_EQ(looks_, 10);
}

TEST(FileQuestions, OfferWhatLosesNothing) {
    FakePlatform fakes;
    ProcessState process{fakes.platform};
    const WindowQuestion changed = QuestionOf(process, {"/x/a.txt", FileNews::Changed, {}}, false);
    EXPECT_NE(changed.text.find("/x/a.txt"), std::string::npos);
    EXPECT_EQ(changed.answers.size(), 2U);
    EXPECT_EQ(changed.first, 0);
    EXPECT_EQ(changed.safe, 1);
    const WindowQuestion edited = QuestionOf(process, {"a", FileNews::Changed, {}}, true);
    EXPECT_EQ(edited.first, 1);
    EXPECT_NE(edited.text.find("would be lost"), std::string::npos);
    EXPECT_EQ(QuestionOf(process, {"a", FileNews::Gone, {}}, true).answers.size(), 1U);
}

TEST(UnsavedEdits, AreSavedOrLostOnlyAsTheUserSays) {
    struct Row {
        const char* name;
        std::vector<bool> modified;
        std::vector<std::int32_t> answers;  // 0 save, 1 do not, 2 cancel
        bool save_works;
        bool goes_on;
        int saved;
    };
    const Row rows[] = {
        {"nothing edited", {false, false}, {}, true, true, 0},
        {"saved", {true, false}, {0}, true, true, 1},
        {"both saved", {true, true}, {0, 0}, true, true, 2},
        {"lost on purpose", {false, true}, {1}, true, true, 0},
        {"one of each", {true, true}, {1, 0}, true, true, 1},
        {"stepped back", {true, false}, {2}, true, false, 0},
        {"stepped back at the second: nothing was saved", {true, true}, {0, 2}, true, false, 0},
        {"the save failed", {true, true}, {0, 1}, false, false, 1},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        struct Answers : FileAnswers {
            std::int32_t Choose(const WindowQuestion& question) override {
                asked.push_back(question);
                return answers.at(asked.size() - 1);
            }
            std::vector<std::int32_t> answers;
        } window;
        window.answers = row.answers;
        FakePlatform fakes;
        ProcessState process{fakes.platform};
        int saved = 0;
        std::vector<EditedText> texts;
        for (const bool modified : row.modified)
            texts.push_back({"name", [modified] { return modified; },
                             [&] {
                                 ++saved;
                                 return row.save_works;
                             }});
        EXPECT_EQ(UnsavedEdits(process, window).MayGoOn(LosingStep::Close, texts), row.goes_on);
        EXPECT_EQ(saved, row.saved);
        EXPECT_EQ(window.asked.size(), row.answers.size());
        for (const WindowQuestion& question : window.asked)
            EXPECT_EQ(question.safe, 2);
    }
}

}  // namespace
}  // namespace zorvane::file_watch_test
