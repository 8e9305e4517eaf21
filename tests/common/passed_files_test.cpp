// Files over a socket: the reader's end of a pipe tells when the last copy of the other end is
// gone.
#include "common/platform/passed_files.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/socket.h>
#include <vector>

#include <gtest/gtest.h>

namespace zorvane {
namespace {

class PassedFilesTest : public ::testing::Test {
  protected:
    PassedFilesTest() {
        int numbers[2] = {-1, -1};
        EXPECT_EQ(socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, numbers), 0);
        from_ = FileDescriptor(numbers[0]);
        to_ = FileDescriptor(numbers[1]);
        EXPECT_EQ(pipe2(numbers, O_CLOEXEC | O_NONBLOCK), 0);
        pipe_read_ = FileDescriptor(numbers[0]);
        pipe_write_ = FileDescriptor(numbers[1]);
    }
    // What a careless or hostile process does.
    ssize_t SendFour() const {
        char byte = 'x';
        iovec data{&byte, 1};
        alignas(cmsghdr) char control[CMSG_SPACE(4 * sizeof(int))] = {};
        msghdr message{};
        message.msg_iov = &data;
        message.msg_iovlen = 1;
        message.msg_control = control;
        message.msg_controllen = sizeof control;
        cmsghdr* const header = CMSG_FIRSTHDR(&message);
        header->cmsg_level = SOL_SOCKET;
        header->cmsg_type = SCM_RIGHTS;
        header->cmsg_len = CMSG_LEN(4 * sizeof(int));
        const std::vector<int> files(4, pipe_write_.Get());
        std::memcpy(CMSG_DATA(header), files.data(), 4 * sizeof(int));
        return sendmsg(from_.Get(), &message, 0);
    }
    bool AllWritersAreGone() const {
        char byte = 0;
        return read(pipe_read_.Get(), &byte, 1) == 0;
    }

    FileDescriptor from_;
    FileDescriptor to_;
    FileDescriptor pipe_read_;
    FileDescriptor pipe_write_;
};

TEST_F(PassedFilesTest, BringsAsManyAsWereSent) {
    for (std::size_t count = 0; count <= kMostPassedFiles + 1; ++count) {
        SCOPED_TRACE(count);
        const std::vector<int> sent(count, pipe_write_.Get());
        const ssize_t gone = SendWithFiles(from_.Get(), "ab", sent);
        if (count > kMostPassedFiles) {
            EXPECT_EQ(gone, -1);
            EXPECT_EQ(errno, EINVAL);
            continue;
        }
        ASSERT_EQ(gone, 2);
        std::array<char, 8> bytes{};
        PassedFiles files;
        EXPECT_EQ(ReceiveWithFiles(to_.Get(), bytes, files), 2);
        EXPECT_EQ(bytes[1], 'b');
        for (std::size_t i = 0; i < files.size(); ++i) {
            EXPECT_EQ(files[i].IsOpen(), i < count);
            EXPECT_TRUE(i >= count || (fcntl(files[i].Get(), F_GETFD) & FD_CLOEXEC) != 0);
        }
    }
    from_.Close();
    std::array<char, 8> bytes{};
    PassedFiles files;
    EXPECT_EQ(ReceiveWithFiles(to_.Get(), bytes, files), 0) << "the end";
}

TEST_F(PassedFilesTest, LeavesNoFileOpenThatHasNoPlace) {
    ASSERT_EQ(SendFour(), 1);
    pipe_write_.Close();
    {
        std::array<char, 8> bytes{};
        PassedFiles files;
        EXPECT_EQ(ReceiveWithFiles(to_.Get(), bytes, files), 1);
        EXPECT_TRUE(files.back().IsOpen());
        EXPECT_FALSE(AllWritersAreGone());
    }
    EXPECT_TRUE(AllWritersAreGone());
}

}  // namespace
}  // namespace zorvane
