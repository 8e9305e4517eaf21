#include "load/text_cache.h"

#include <filesystem>
#include <sys/stat.h>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/temp_folder.h"

namespace zorvane {
namespace {

namespace fs = std::filesystem;

std::vector<fs::path> FilesIn(const std::string& folder) {
    std::vector<fs::path> files;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
        if (entry.is_regular_file() && entry.path().extension() == ".text")
            files.push_back(entry.path());
    }
    return files;
}

const DocumentText kDocument{"one\ntwo \xC3\xA4\n",
                             {{PlaceKind::Page, 1, "1"}, {PlaceKind::Sheet, 2, "a b"}}};

TEST(TextCache, GivesBackWhatItKept) {
    const TempFolder folder;
    const TextCache cache(folder.Path("deep/cache"));
    const TextKey key = KeyOf("bytes", "plain");
    EXPECT_FALSE(cache.Find(key));
    cache.Keep(key, kDocument);
    EXPECT_EQ(cache.Find(key), kDocument);
    EXPECT_EQ(TextCache(folder.Path("deep/cache")).Find(key), kDocument);
    for (const TextKey& other :
         {KeyOf("byteS", "plain"), KeyOf("bytes ", "plain"), KeyOf("bytes", "rich")})
        EXPECT_FALSE(cache.Find(other));
    EXPECT_EQ(cache.Size().entries, 1);
    EXPECT_GT(cache.Size().bytes, static_cast<std::int64_t>(kDocument.text.size()));
    ASSERT_TRUE(cache.Clear().ok());
    EXPECT_FALSE(cache.Find(key));
    EXPECT_EQ(cache.Size().entries, 0);
    EXPECT_EQ(cache.Size().bytes, 0);
}

TEST(TextCache, KeepsTextsToTheirOwner) {
    const TempFolder folder;
    const TextCache cache(folder.Path("cache"));
    cache.Keep(KeyOf("bytes", ""), kDocument);
    struct stat facts {};
    ASSERT_EQ(stat(folder.Path("cache").c_str(), &facts), 0);
    EXPECT_EQ(facts.st_mode & 0777U, 0700U);
    ASSERT_EQ(stat(FilesIn(folder.Path("cache")).at(0).c_str(), &facts), 0);
    EXPECT_EQ(facts.st_mode & 0777U, 0600U);
}

TEST(TextCache, TouchesNothingThatIsNoEntry) {
    const TempFolder folder;
    const TextCache cache(folder.Path("cache"), 1);
    cache.Keep(KeyOf("bytes", ""), kDocument);
    const fs::path entry = FilesIn(folder.Path("cache")).at(0);
    const fs::path others[] = {entry.parent_path() / "note.txt",
                               fs::path(folder.Path("cache")) / "letters" / "a.text"};
    for (const fs::path& other : others) {
        fs::create_directories(other.parent_path());
        fs::copy_file(entry, other);
    }
    EXPECT_EQ(cache.Size().entries, 1);
    cache.Trim();
    EXPECT_FALSE(fs::exists(entry));
    ASSERT_TRUE(cache.Clear().ok());
    for (const fs::path& other : others)
        EXPECT_TRUE(fs::exists(other)) << other;
}

// Any byte that is another, and any cut, is a miss, and the entry goes.
TEST(TextCache, ServesNothingThatIsDamaged) {
    const TempFolder folder;
    const TextCache cache(folder.Path("cache"));
    const TextKey key = KeyOf("bytes", "");
    cache.Keep(key, kDocument);
    const fs::path file = FilesIn(folder.Path("cache")).at(0);
    const std::string whole = folder.Read(file.lexically_relative(folder.Path()).string());
    const auto serves = [&](const std::string& bytes) {
        std::ofstream(file, std::ios::binary) << bytes;
        const bool served = cache.Find(key).has_value();
        EXPECT_EQ(fs::exists(file), served);
        return served;
    };
    EXPECT_TRUE(serves(whole));
    for (std::size_t at = 0; at < whole.size(); ++at) {
        std::string damaged = whole;
        damaged[at] = static_cast<char>(damaged[at] ^ 0x10);
        EXPECT_FALSE(serves(damaged)) << at;
    }
    for (const std::size_t size : {std::size_t{0}, std::size_t{8}, whole.size() - 1})
        EXPECT_FALSE(serves(whole.substr(0, size)));
    EXPECT_FALSE(serves(whole + "x"));
}

TEST(TextCache, DropsTheOldestAboveItsBound) {
    const TempFolder folder;
    const auto name = [](int number) { return KeyOf(std::to_string(number), ""); };
    constexpr int kEntries = 20;
    {
        const TextCache cache(folder.Path("cache"));
        for (int number = 0; number < kEntries; ++number)
            cache.Keep(name(number), kDocument);
    }
    const std::vector<fs::path> files = FilesIn(folder.Path("cache"));
    ASSERT_EQ(files.size(), std::size_t{kEntries});
    const auto size = static_cast<std::int64_t>(fs::file_size(files[0]));
    const auto now = fs::file_time_type::clock::now();
    for (std::size_t index = 0; index < files.size(); ++index)
        fs::last_write_time(files[index],
                            now - std::chrono::hours(48) + std::chrono::minutes(index));
    const TextCache unbound(folder.Path("cache"), size * kEntries);
    unbound.Trim();
    EXPECT_EQ(unbound.Size().entries, kEntries);
    // A use makes the oldest the newest.
    for (int number = 0; fs::last_write_time(files[0]) < now - std::chrono::hours(24); ++number) {
        ASSERT_LT(number, kEntries);
        for (std::size_t index = 1; index < files.size(); ++index)
            fs::last_write_time(files[index],
                                now - std::chrono::hours(23) + std::chrono::minutes(index));
        EXPECT_TRUE(unbound.Find(name(number)).has_value());
    }
    const TextCache bound(folder.Path("cache"), size * 10);
    bound.Trim();
    EXPECT_EQ(bound.Size().entries, 9);
    EXPECT_TRUE(fs::exists(files[0]));
}

TEST(TextCache, WithoutAFolderKeepsNothing) {
    const TextCache cache("");
    cache.Keep(KeyOf("a", ""), kDocument);
    cache.Trim();
    EXPECT_FALSE(cache.Find(KeyOf("a", "")));
    EXPECT_TRUE(cache.Clear().ok());
}

TEST(TextCache, ServesSeveralAtOnce) {
    const TempFolder folder;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&folder] {
            const TextCache cache(folder.Path("cache"));
            for (int round = 0; round < 200; ++round) {
                const TextKey key = KeyOf(std::to_string(round % 7), "");
                const auto found = cache.Find(key);
                EXPECT_TRUE(!found || *found == kDocument);
                cache.Keep(key, kDocument);
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(TextCache(folder.Path("cache")).Size().entries, 7);
}

TEST(DocumentText, TellsWhereItsLinesStand) {
    struct LinkPlaceRow {
        PlaceMarks marks;
        const char* text;
        const char* left;  ///< of the text
        const char* places;
    };
    const LinkPlaceRow rows[] = {
        {PlaceMarks::None, "a\fb\n", "a\fb\n", " | "},
        {PlaceMarks::FormFeeds, "a\n\fb\nc\n\f\fd\n", "a\nb\nc\nd\n",
         "page 1 | page 2 | page 2 | page 4 | page 4"},
        {PlaceMarks::SlideNumbers, "Slide 1\nShape 1:\na\nShape 2:\nSlide 2\nb\nSlide 2\n\nc\n",
         "a\nSlide 2\nb\n\nc\n", "slide 1 | slide 1 | slide 1 | slide 2 | slide 2 | slide 2"},
        {PlaceMarks::SlideNumbers, "Slide 1\nSlide 2\nShape 1:\nx", "x\n", "slide 2 | slide 2"},
        {PlaceMarks::SheetNames,
         "============= A b =============\n1 ,2\n\"x, y\nz\" ,q\nr\n"
         "============= C =============\ns\n",
         nullptr, "A b | A b!A1 | A b!A2 | A b!A2 | A b!A3 | C | C!A1 | C!A2"},
    };
    for (const LinkPlaceRow& row : rows) {
        SCOPED_TRACE(row.text);
        const DocumentText document = WithPlaces(row.text, row.marks);
        EXPECT_EQ(document.text, row.left == nullptr ? row.text : row.left);
        PlaceFinder finder(document);
        std::string places;
        const auto lines = std::count(document.text.begin(), document.text.end(), '\n') + 1;
        for (std::int64_t line = 1; line <= lines; ++line)
            places += (line == 1 ? "" : " | ") + finder.PlaceOf(line, 1);
        EXPECT_EQ(places, row.places);
    }
    const DocumentText sheet = WithPlaces(rows[4].text, PlaceMarks::SheetNames);
    PlaceFinder finder(sheet);
    EXPECT_EQ(finder.PlaceOf(4, 5), "A b!B2");
    EXPECT_EQ(finder.PlaceOf(2, 4), "A b!B1");
    EXPECT_EQ(finder.PlaceOf(3, 6), "A b!A2");
    EXPECT_EQ(finder.PlaceOf(7, 1), "C!A1");
}

}  // namespace
}  // namespace zorvane
