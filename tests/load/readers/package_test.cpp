#include "load/readers/container/package.h"

#include <gtest/gtest.h>

#include "load/readers/beside/package_beside.h"
#include "load/readers/container/xml_part.h"
#include "load/readers/container/xml_scanner.h"
#include "tests/support/zip_file.h"

namespace zorvane::package_test {
namespace {

TEST(Package, FindsPartsAsOfficeProgramsDo) {
    const std::string bytes = MakeZip({{"word/Document.xml", "text"}, {"empty", ""}});
    const auto package = Package::Open(bytes);
    ASSERT_TRUE(package);
    EXPECT_TRUE(package->Has("/word/document.xml"));
    EXPECT_EQ(package->Read("WORD/DOCUMENT.XML"), "text");
    EXPECT_EQ(package->Read("empty"), "");
    ReadError error = ReadError::None;
    EXPECT_FALSE(package->Read("none", &error).has_value());
    EXPECT_EQ(error, ReadError::WrongFormat);
    EXPECT_FALSE(package->Encrypted());
    EXPECT_EQ(package->Stream("none"), nullptr);
}

TEST(PartDigests, TellPartsApartThatTheyReadInPart) {
    constexpr std::size_t kMost = 100'000;
    const std::string part(3 * kMost / 2, 'x');
    std::string other = part;
    other.back() = 'y';
    const std::string bytes = MakeZip({{"a", part}, {"b", other}, {"c", part}, {"d", other}});
    const auto package = Package::Open(bytes);
    PartDigests digests(*package, kMost);
    EXPECT_NE(digests.Of("a"), digests.Of("b")) << "different behind what is read";
    EXPECT_EQ(digests.Of("c"), digests.Of("a"));
    EXPECT_NE(digests.Of("d"), digests.Of("a")) << "nothing is left to be read";
    PartDigests whole(*package, part.size());
    EXPECT_NE(whole.Of("a"), whole.Of("b"));
}

TEST(Package, RefusesWhatIsNoZipFile) {
    const std::string whole = MakeZip({{"a", std::string(1000, 'x')}});
    for (const std::string& bytes : {std::string(), std::string("PK"), std::string("PK\x03\x04 no"),
                                     whole.substr(0, whole.size() - 5)}) {
        SCOPED_TRACE(bytes.size());
        EXPECT_EQ(Package::Open(bytes), nullptr);
    }
}

TEST(Package, APartThatUnpacksToTooMuchIsRefusedAndAStreamIsNot) {
    const std::string bytes = MakeZip({{"bomb", std::string(kMaxPartBytes + 10, '\0')}});
    ASSERT_LT(bytes.size(), kMaxPartBytes / 100);
    const auto package = Package::Open(bytes);
    ReadError error = ReadError::None;
    EXPECT_FALSE(package->Read("bomb", &error).has_value());
    EXPECT_EQ(error, ReadError::TooLarge);
    const auto stream = package->Stream("bomb");
    std::string buffer(std::size_t{1} << 20, ' ');
    std::size_t read = 0;
    while (const std::size_t got = stream->Read(buffer.data(), buffer.size()))
        read += got;
    EXPECT_EQ(read, kMaxPartBytes + 10);
    EXPECT_FALSE(stream->Failed());
}

TEST(Package, PartsOverTheBudgetOfAllAreTooLargeAndNotDamaged) {
    const std::string part(40'000, 'x');
    const std::string bytes = MakeZip({{"a", part}, {"b", part}, {"c", part}});
    const auto package = Package::Open(bytes, 100'000);
    ReadError error = ReadError::None;
    EXPECT_EQ(package->Read("a"), part);
    EXPECT_EQ(package->Read("b"), part);
    EXPECT_FALSE(package->Read("c", &error).has_value());
    EXPECT_EQ(error, ReadError::TooLarge);
    const auto stream = package->Stream("c");
    std::string buffer(part.size(), ' ');
    EXPECT_EQ(stream->Read(buffer.data(), buffer.size()), 0u);
    EXPECT_EQ(stream->Error(), ReadError::TooLarge);
    XmlScanner scanner(*stream);
    EXPECT_EQ(scanner.Next(), XmlScanner::Token::Failed);
    EXPECT_EQ(scanner.Fault().error, ReadError::TooLarge);
    XmlPart xml;
    EXPECT_EQ(XmlPart::Read(*package, "c", xml).error, ReadError::TooLarge);
}

TEST(Package, FindsPartsWhateverSeparatorTheirNamesHave) {
    const std::string bytes = MakeZip({{"word\\document.xml", "text"},
                                       {"./word/styles.xml", "styles"},
                                       {"word\\_rels\\document.xml.rels",
                                        "<Relationships><Relationship Id=\"a\" Type=\"x/notes\" "
                                        "Target=\"..\\word\\styles.xml\"/></Relationships>"}});
    const auto package = Package::Open(bytes);
    EXPECT_EQ(package->Read("word/document.xml"), "text");
    EXPECT_EQ(package->Read("\\word\\Document.xml"), "text");
    EXPECT_EQ(package->Names().front(), "word/document.xml");
    const auto parts = ReadRelationships(*package, "word/document.xml");
    EXPECT_EQ(package->Read(parts.at("a").target), "styles");
}

TEST(Package, ABrokenPartIsToldAsDamaged) {
    std::string bytes = MakeZip({{"a", "some text that packs, packs, packs, packs, packs"}});
    const std::size_t data = bytes.find('a', 26) + 4;
    bytes.replace(data, 6, "\xFF\xFF\xFF\xFF\xFF\xFF");
    const auto package = Package::Open(bytes);
    ASSERT_TRUE(package);
    ReadError error = ReadError::None;
    EXPECT_FALSE(package->Read("a", &error).has_value());
    EXPECT_EQ(error, ReadError::Damaged);
}

struct ResolveRow {
    const char* from;
    const char* reference;
    const char* part;
};
constexpr ResolveRow kResolveRows[] = {
    {"word/document.xml", "styles.xml", "word/styles.xml"},
    {"word/document.xml", "../media/a.png", "media/a.png"},
    {"word/document.xml", "/xl/b.xml", "xl/b.xml"},
    {"", "word/document.xml", "word/document.xml"},
    {"a/b.xml", "../../../../etc/passwd", "etc/passwd"},
    {"a/b.xml", "./c//d.xml", "a/c/d.xml"},
    {"a/b.xml", "", "a"},
    {"xl/book.xml", "sheets\\a.xml", "xl/sheets/a.xml"},
    {"xl/book.xml", "\\xl\\..\\a.xml", "a.xml"},
};

TEST(Package, ReferencesNeverLeaveIt) {
    for (const ResolveRow& row : kResolveRows) {
        SCOPED_TRACE(row.reference);
        EXPECT_EQ(ResolvePart(row.from, row.reference), row.part);
    }
}

TEST(Relationships, AreReadBesideTheirPart) {
    const std::string bytes =
        MakeZip({{"word/_rels/document.xml.rels",
                  "<Relationships><Relationship Id=\"a\" Type=\"http://x/y/styles\" "
                  "Target=\"s.xml\"/><Relationship Id=\"b\" Type=\"hyperlink\" "
                  "TargetMode=\"External\" Target=\"http://a/../b\"/><Other/></Relationships>"}});
    const auto package = Package::Open(bytes);
    const auto parts = ReadRelationships(*package, "word/document.xml");
    ASSERT_EQ(parts.size(), 2u);
    EXPECT_EQ(parts.at("a").type, "styles");
    EXPECT_EQ(parts.at("a").target, "word/s.xml");
    EXPECT_TRUE(parts.at("b").external);
    EXPECT_EQ(parts.at("b").target, "http://a/../b");
    EXPECT_TRUE(ReadRelationships(*package, "none.xml").empty());
}

TEST(XmlPart, KeepsBlanksAndExpandsNothing) {
    XmlPart part;
    ASSERT_TRUE(XmlPart::Parse("<!DOCTYPE a [<!ENTITY e SYSTEM \"file:///etc/passwd\">]>"
                               "<w:a x:n='1'><w:t> </w:t><w:t>&e;&#65;&lt;</w:t></w:a>",
                               part)
                    .ok());
    const pugi::xml_node root = part.Root();
    EXPECT_TRUE(Is(root, "a"));
    EXPECT_EQ(Attribute(root, "n"), "1");
    EXPECT_EQ(Attribute(root, "none"), "");
    EXPECT_STREQ(Child(root, "t").text().get(), " ");
    EXPECT_STREQ(root.last_child().text().get(), "&e;A<");
    EXPECT_EQ(XmlPart::Parse("<a><b></a>", part).error, ReadError::Damaged);
    EXPECT_EQ(XmlPart::Parse("", part).error, ReadError::Damaged);
}

struct NumberRow {
    const char* text;
    std::int32_t number;
};
constexpr NumberRow kNumberRows[] = {{"12", 12}, {"+3", 3},  {"-4", -4},        {"", 7},
                                     {"x", 7},   {"5pt", 5}, {"99999999999", 7}};

TEST(XmlPart, NumbersOfAttributesAreBounded) {
    for (const NumberRow& row : kNumberRows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(NumberOf(row.text, 7), row.number);
    }
}

}  // namespace
}  // namespace zorvane::package_test
