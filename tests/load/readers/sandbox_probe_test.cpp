// Every road out of a closed reader that a document in command of it could try.
#include <csignal>
#include <cstdlib>
#include <filesystem>

#include <gtest/gtest.h>

#include "tests/load/readers/forbidden_roads.h"
#include "tests/support/probe.h"
#include "tests/support/temp_folder.h"

namespace zorvane::sandbox_probe_test {
namespace {

using namespace forbidden_roads;

class SandboxProbe : public testing::Test {
  protected:
    SandboxProbe() {
        const auto keep = [](char* place, std::size_t size, const std::string& text) {
            std::snprintf(place, size, "%s", text.c_str());
        };
        chmod(folder_.Path().c_str(), 0777);
        keep(g_prey.folder, sizeof g_prey.folder, folder_.Path());
        keep(g_prey.witness, sizeof g_prey.witness, folder_.Write("witness", "stays"));
        keep(g_prey.fresh, sizeof g_prey.fresh, folder_.Path("fresh"));
        keep(g_prey.table, sizeof g_prey.table, folder_.Write("table", "of characters"));
        keep(g_prey.address, sizeof g_prey.address, folder_.Path("socket"));
        chmod(g_prey.witness, 0666);
        chmod(g_prey.table, 0666);
        // Else the road to its mode would be closed to the one who tries it.
        if (geteuid() == 0) {
            EXPECT_EQ(chown(g_prey.witness, kNobody, kNobody), 0);
        }
        g_prey.inherited = open(g_prey.witness, O_RDONLY);
        g_prey.parent = getpid();
        listener_ = socket(AF_UNIX, SOCK_STREAM, 0);
        const sockaddr_un address = Listener();
        EXPECT_EQ(bind(listener_, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
        EXPECT_EQ(listen(listener_, 1), 0);
        g_tables = OpenTables();
        g_tables.Add(g_prey.table, open(g_prey.table, O_RDONLY));
    }
    ~SandboxProbe() override {
        close(listener_);
        close(g_prey.inherited);
        close(g_tables.HighestFile());
    }

    TempFolder folder_;
    int listener_ = -1;
};

TEST_F(SandboxProbe, NoRoadLeadsOut) {
    for (const Road& road : kRoads) {
        SCOPED_TRACE(road.name);
        for (const auto& close_in : {CloseReader, CloseReaderWithoutLandlock}) {
            const ProbeEnd end = Probe(close_in, road.reached);
            EXPECT_TRUE(end == ProbeEnd::Refused || end == ProbeEnd::Killed)
                << static_cast<int>(end);
            EXPECT_EQ(folder_.Read("witness"), "stays");
            EXPECT_EQ(g_prey.secret, 42);
            EXPECT_FALSE(std::filesystem::exists(g_prey.fresh));
        }
    }
}

// A probe that reaches nothing even without a sandbox would prove nothing of it.
TEST_F(SandboxProbe, MostRoadsAreOpenWithoutIt) {
    int open_roads = 0;
    for (const Road& road : kRoads) {
        if (Probe([] { return true; }, road.reached) == ProbeEnd::Reached)
            ++open_roads;
        std::filesystem::remove_all(g_prey.fresh);
        folder_.Write("witness", "stays");
        chmod(g_prey.witness, 0666);
    }
    g_prey.secret = 42;
    // Some need rights that an ordinary user has nowhere.
    EXPECT_GT(open_roads, 35);
}

TEST_F(SandboxProbe, TheWorkOfAReaderIsAllowed) {
    EXPECT_EQ(Probe(CloseReader,
                    [] {
                        std::string text(100'000, 'x');
                        text.resize(3'000'000);
                        char bytes[32] = {};
                        const int table = open(g_prey.table, O_RDONLY);
                        const bool read_all = read(table, bytes, sizeof bytes) == 13;
                        struct stat facts {};
                        const bool known = fstat(table, &facts) == 0 && facts.st_size == 13;
                        close(table);
                        const int again = open(g_prey.table, O_RDONLY);
                        const bool from_the_start = read(again, bytes, 2) == 2 && bytes[0] == 'o';
                        return text.size() == 3'000'000 && read_all && known && from_the_start &&
                               clock() >= 0 && write(STDIN_FILENO, "x", 1) == 1;
                    }),
              ProbeEnd::Reached);
}

TEST_F(SandboxProbe, AForbiddenCallIsTold) {
    std::string said;
    EXPECT_EQ(Probe(
                  CloseReader, [] { return Opens(socket(AF_INET, SOCK_STREAM, 0)); }, &said),
              ProbeEnd::Killed);
    const std::string number = std::to_string(SYS_socket);
    EXPECT_EQ(said, "call=" + std::to_string(number.size()) + ":" + number + "\n\n");
}

TEST_F(SandboxProbe, FileSizeAndFilesAreBounded) {
    EXPECT_EQ(Probe(
                  [this] {
                      close(g_prey.inherited);
                      g_prey.inherited = open(g_prey.witness, O_WRONLY);
                      SetLimits({kMemory, 100, 20, 60});
                      return true;
                  },
                  [] {
                      std::signal(SIGXFSZ, SIG_IGN);
                      return lseek(g_prey.inherited, 200, SEEK_SET) == 200 &&
                             Worked(write(g_prey.inherited, "x", 1));
                  }),
              ProbeEnd::Refused);
    EXPECT_EQ(Probe(
                  [] {
                      SetLimits({kMemory, 100, 20, 60});
                      return true;
                  },
                  [] {
                      int copies = 0;
                      while (dup(STDIN_FILENO) >= 0)
                          ++copies;
                      return copies > 68;
                  }),
              ProbeEnd::Refused);
}

}  // namespace
}  // namespace zorvane::sandbox_probe_test
