#include "app/input_file.h"

#include <utility>

#include <gtest/gtest.h>

#include "common/log_message.h"
#include "tests/support/fakes.h"

namespace zorvane {
namespace {

TEST(BeginCommand, KnowsDoubleByteLocalesAsTheSlashFormDoes) {
    for (const auto& [locale, double_byte] : {std::pair{1041, true}, {1042, true}, {1031, false}}) {
        FakePlatform system;
        system.locale().id = locale;
        ProcessState command(system.platform);
        ASSERT_TRUE(BeginCommand(command, "").ok());
        ProcessState slash(system.platform);
        InitializeTranslator(slash);
        EXPECT_EQ(command.translator.gbDoubleByteLocale, double_byte) << locale;
        EXPECT_EQ(slash.translator.gbDoubleByteLocale, double_byte) << locale;
    }
}

TEST(MessageHold, SaysWhatItHeldOnlyWhenItIsReleased) {
    FakePlatform system;
    ProcessState process(system.platform);
    process.telling.manner.sLogFile = system.folder.Path("log");
    {
        MessageHold hold(process.telling);
        LogMessage(process, "one");
        EXPECT_FALSE(hold.Empty());
        EXPECT_EQ(system.folder.Read("log"), "");
        hold.Release();
        EXPECT_EQ(system.folder.Read("log"), "one\r\n");
        LogMessage(process, "two");
    }
    EXPECT_EQ(system.folder.Read("log"), "one\r\ntwo\r\n");
    {
        MessageHold hold(process.telling);
        LogMessage(process, "three");
    }
    LogMessage(process, "four");
    EXPECT_EQ(system.folder.Read("log"), "one\r\ntwo\r\nfour\r\n");
}

}  // namespace
}  // namespace zorvane
