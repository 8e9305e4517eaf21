#include "load/conversion_service.h"

#include <array>
#include <fstream>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>

#include <gtest/gtest.h>

#include "load/office_place.h"
#include "load/warm_readers.h"
#include "tests/support/false_converter.h"
#include "tests/support/loader_fixture.h"

namespace zorvane {
namespace {

class ConversionServiceTest : public LoaderFixture {
  protected:
    ConversionMessage Job(std::string_view name, std::string_view bytes) {
        return {{"kind", "word"},
                {"source", system_.folder.Write(name, bytes)},
                {"target", system_.folder.Path(std::string(name) + ".out")},
                {"format", "2"}};
    }
    ConversionService service_{system_.platform};
};

TEST_F(ConversionServiceTest, ExplainsEveryErrorWithTheFile) {
    for (std::int32_t code = 1; code <= static_cast<std::int32_t>(ReadError::NoSandbox); ++code) {
        SCOPED_TRACE(code);
        const auto error = static_cast<ReadError>(code);
        const std::string text = Explain(FailedConversion(error, "detail\nmore"), "a.docx");
        EXPECT_TRUE(text.starts_with("a.docx: ")) << text;
        EXPECT_EQ(text.find('\n'), std::string::npos) << "one line";
        EXPECT_EQ(text.find("detail") != std::string::npos, error != ReadError::PasswordNeeded);
    }
    EXPECT_EQ(Explain({}, "a.docx"), "");
}

TEST_F(ConversionServiceTest, ExplainsWhatIsFixedInTheUsersLanguage) {
    const EnglishTo marked = [](std::string_view english) {
        return "<" + std::string(english) + ">";
    };
    for (const auto& [detail, shown] :
         {std::pair{"no such sheet", "<no such sheet>"},
          {"the package (ZIP) is cut off or broken\nin part 3",
           "<the package (ZIP) is cut off or broken>"},
          {"the sheet Sales is missing", "the sheet Sales is missing"},
          {"No such file or directory", "No such file or directory"}})
        EXPECT_EQ(Explain(FailedConversion(ReadError::Damaged, detail), "a.xlsx", marked),
                  "a.xlsx: <the document is damaged>: " + std::string(shown));
}

TEST_F(ConversionServiceTest, LeavesNoTargetAfterAFailure) {
    const ConversionMessage job = Job("a.docx", "PK\x03\x04 broken");
    EXPECT_EQ(service_.Run(job, {}).error, ReadError::Damaged);
    EXPECT_FALSE(std::filesystem::exists(std::string(TextOf(job, "target"))));
    ConversionMessage unwritable = Job("b.html", "<p>x</p>");
    unwritable["target"] = system_.folder.Path("none/out");
    EXPECT_EQ(service_.Run(unwritable, {}).error, ReadError::CannotWrite);
    ConversionMessage vanished = Job("c.html", "<p>x</p>");
    std::filesystem::remove(system_.folder.Path("c.html"));
    EXPECT_EQ(service_.Run(vanished, {}).error, ReadError::CannotOpen);
}

TEST_F(ConversionServiceTest, KeepsTheFirstFailureUntilItIsForgotten) {
    const ConversionMessage first = Job("a.docx", "PK\x03\x04 broken");
    const std::string named_first = std::string(TextOf(first, "source")) + ": ";
    EXPECT_FALSE(service_.Run(first, {}).ok());
    EXPECT_TRUE(service_.FirstFailure().starts_with(named_first)) << service_.FirstFailure();
    const ConversionMessage second = Job("b.docx", "PK\x03\x04 broken too");
    EXPECT_FALSE(service_.Run(second, {}).ok());
    EXPECT_TRUE(service_.FirstFailure().starts_with(named_first)) << service_.FirstFailure();
    service_.ForgetFailures();
    EXPECT_TRUE(service_.Run(Job("c.html", "<p>x</p>"), {}).ok());
    EXPECT_EQ(service_.FirstFailure(), "");
}

TEST_F(ConversionServiceTest, ACancelEndsAtOnce) {
    std::string page;
    for (int i = 0; i < 400000; ++i)
        page += "<p>a paragraph</p>";
    const ConversionMessage job = Job("a.html", page);
    EXPECT_EQ(service_.Run(job, [](std::int32_t) { return false; }).error, ReadError::Cancelled);
    EXPECT_FALSE(std::filesystem::exists(std::string(TextOf(job, "target"))));
}

// Sent by hand, without the service that runs one at a time.
TEST_F(ConversionServiceTest, SeveralFilesConvertAtOnce) {
    constexpr std::size_t kFiles = 4;
    std::vector<AnswerFile> answers(kFiles);
    std::vector<ConverterProcess> processes(kFiles);
    for (std::size_t i = 0; i < kFiles; ++i) {
        const std::string source = system_.folder.Write(std::to_string(i) + ".html",
                                                        "<p>page " + std::to_string(i) + "</p>");
        const Result<FileDescriptor> document = OpenDocument(source, system_.folder.Path());
        Result<AnswerFile> answer = AnswerFile::Make(system_.folder.Path());
        ASSERT_TRUE(document.ok() && answer.ok());
        answers[i] = std::move(answer).value();
        ASSERT_TRUE(processes[i].Start(ZORVANE_CONVERTER, {}));
        processes[i].Send({{"kind", "word"},
                           {"name", "a.html"},
                           {"format", "2"},
                           {"memory", "500000000"},
                           {"filebytes", "1000000"},
                           {"seconds", "30"}},
                          std::array{document.value().Get(), answers[i].Descriptor()});
    }
    for (std::size_t i = 0; i < kFiles; ++i) {
        const ConversionAnswer answer = processes[i].Wait({std::chrono::seconds(30)}, {});
        ASSERT_EQ(answer.end, ConversionEnd::Answered);
        const ConversionResult result =
            CheckedAnswer(answer.values, AnswerShape::OneDocument, answers[i].Size());
        ASSERT_EQ(result.parts.size(), 1u);
        EXPECT_TRUE(answers[i].CopyTo(result.parts[0], system_.folder.Path("out")).ok());
        EXPECT_EQ(system_.folder.Read("out"), "page " + std::to_string(i) + "\r\n");
    }
}

TEST_F(ConversionServiceTest, AProcessReadsOneDocumentAndEnds) {
    ConverterProcess process;
    ASSERT_TRUE(process.Start(ZORVANE_CONVERTER, {}));
    process.Send({{"kind", "nonsense"}});
    EXPECT_EQ(process.Wait({std::chrono::seconds(30)}, {}).end, ConversionEnd::Crashed)
        << "a request brings its files";
    ConversionMessage job = Job("a.html", "<p>x</p>");
    job["kind"] = "nonsense";
    EXPECT_EQ(service_.Run(job, {}).error, ReadError::Unsupported);
}

TEST_F(ConversionServiceTest, WarmReadersReadAsFreshOnes) {
    const ConversionMessage good = Job("a.html", "<p>text</p>");
    const ConversionMessage broken = Job("b.docx", "PK\x03\x04 broken");
    {
        const WarmReaders warm;
        EXPECT_TRUE(service_.Run(good, {}).ok());
        // Nothing is started any more: what reads now is a copy.
        if (WarmReaders::MakesCopies())
            std::filesystem::remove(system_.folder.Path("program/zorvane-convert"));
        EXPECT_EQ(service_.Run(broken, {}).error, ReadError::Damaged);
        service_.Expect(good);
        EXPECT_EQ(service_.Run(broken, {}).error, ReadError::Damaged) << "two at once";
        EXPECT_TRUE(service_.Run(good, {}).ok());
        EXPECT_EQ(system_.folder.Read("a.html.out"), "text\r\n");
    }
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "a process is left";
    if (WarmReaders::MakesCopies()) {
        EXPECT_EQ(service_.Run(good, {}).error, ReadError::NotStarted);
    }
}

TEST_F(ConversionServiceTest, AReaderThatMakesNoCopiesIsStartedEachTime) {
    InstallFalseConverter(system_.folder.Path("program"), "error=1:1\n\n", "");
    const WarmReaders warm;
    for (int turn = 0; turn < 2; ++turn)
        EXPECT_FALSE(service_.Run(Job("a.html", "<p>text</p>"), {}).ok());
}

TEST_F(ConversionServiceTest, APipeIsReadToItsEnd) {
    const std::string pipe = system_.folder.Path("pipe.html");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    std::thread writer([&pipe] { std::ofstream(pipe) << "<p>from a pipe</p>"; });
    ConversionMessage job = Job("a.html", "");
    job["source"] = pipe;
    EXPECT_TRUE(service_.Run(job, {}).ok());
    writer.join();
    EXPECT_EQ(system_.folder.Read("a.html.out"), "from a pipe\r\n");
}

TEST_F(ConversionServiceTest, ARequestThatWasExpectedIsUnderWayAlready) {
    const ConversionMessage job = Job("a.html", "<p>text</p>");
    ConversionMessage other = job;
    other["format"] = "8";
    service_.Expect(job);
    EXPECT_TRUE(service_.Run(other, {}).ok()) << "another request is carried out by itself";
    EXPECT_NE(system_.folder.Read("a.html.out").find("text</span>"), std::string::npos);
    std::filesystem::remove(system_.folder.Path("program/zorvane-convert"));
    EXPECT_TRUE(service_.Run(job, {}).ok()) << "no second start is needed";
    EXPECT_EQ(system_.folder.Read("a.html.out"), "text\r\n");
    EXPECT_EQ(service_.Run(job, {}).error, ReadError::NotStarted) << "it is expected once";
}

TEST_F(ConversionServiceTest, WorkersOfASuiteShareNoProfile) {
    OfficeProfile first;
    const std::string folder = first.Take(system_.folder.Path());
    EXPECT_EQ(first.Take(system_.folder.Path()), folder);
    {
        OfficeProfile second;
        EXPECT_NE(second.Take(system_.folder.Path()), folder);
        EXPECT_NE(OfficeProfile().Take(system_.folder.Path()), second.Take(""));
    }
    first = OfficeProfile();
    EXPECT_EQ(OfficeProfile().Take(system_.folder.Path()), folder) << "an old one serves again";
    EXPECT_EQ(OfficeProfile().Take(system_.folder.Path("none")), "");
}

TEST_F(ConversionServiceTest, TwoSuitesWorkAtOnce) {
    unsetenv("ZORVANE_OFFICE");
    if (!FindOffice())
        GTEST_SKIP() << "no office suite is installed";
    constexpr int kFiles = 2;
    const auto convert = [this](const std::string& name) {
        ConversionService service(system_.platform);
        service.SetOfficeStays(true);
        const std::string source = system_.folder.Write(name, "{\\rtf1 " + name + "\\par}");
        for (int file = 0; file < kFiles; ++file) {
            const std::string target = source + std::to_string(file) + ".doc";
            const ConversionResult made = service.ConvertByOffice(source, "", target, "doc", {});
            EXPECT_TRUE(made.ok()) << Explain(made, source);
            EXPECT_TRUE(std::filesystem::exists(target));
        }
    };
    std::thread beside([&convert] { convert("one.rtf"); });
    convert("two.rtf");
    beside.join();
}

TEST_F(ConversionServiceTest, ASuiteStaysAsLongAsItIsToStay) {
    unsetenv("ZORVANE_OFFICE");
    if (!FindOffice())
        GTEST_SKIP() << "no office suite is installed";
    const auto has_children = [] {
        siginfo_t ended{};
        return waitid(P_ALL, 0, &ended, WEXITED | WNOHANG | WNOWAIT) == 0;
    };
    const std::string source = system_.folder.Write("a.rtf", "{\\rtf1 text\\par}");
    for (const bool stays : {false, true}) {
        SCOPED_TRACE(stays);
        service_.SetOfficeStays(stays);
        EXPECT_TRUE(service_.ConvertByOffice(source, "", source + ".doc", "doc", {}).ok());
        EXPECT_EQ(has_children(), stays);
    }
    service_.SetOfficeStays(false);
    EXPECT_FALSE(has_children());
}

TEST_F(ConversionServiceTest, WithoutAnOfficeSuiteItsFormatsAreRefused) {
    setenv("ZORVANE_OFFICE", "none", 1);
    EXPECT_FALSE(service_.OfficeInstalled());
    const std::string binary = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1" + std::string(600, '\0');
    EXPECT_EQ(service_.Run(Job("a.doc", binary), {}).error, ReadError::NeedsOffice);
    unsetenv("ZORVANE_OFFICE");
}

}  // namespace
}  // namespace zorvane
