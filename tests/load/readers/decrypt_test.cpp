#include "load/readers/container/decrypt.h"

#include <fstream>
#include <random>
#include <sstream>

#include <gtest/gtest.h>

#include "load/readers/container/crypto_tools.h"
#include "load/readers/container/package.h"
#include "load/readers/protected_package.h"
#include "tests/support/encrypted_package.h"

namespace zorvane::decrypt_test {
namespace {

// Not a multiple of a block, of a segment or of a sector.
std::string Plain(std::size_t size = 10'001) {
    std::mt19937 random(7);
    std::string text = "PK";
    while (text.size() < size)
        text += static_cast<char>(random() & 0xFF);
    return text;
}

struct CipherRow {
    const char* name;
    std::string file;
    const char* password;
    ReadError error;
};

TEST(Decrypt, OpensEachKindByItsPasswordAlone) {
    const std::string plain = Plain();
    const CipherRow rows[] = {
        {"standard 128", StandardEncrypted(plain, "pass", 128), "pass", ReadError::None},
        {"standard 192", StandardEncrypted(plain, "pass", 192), "pass", ReadError::None},
        {"standard 256", StandardEncrypted(plain, "pass", 256), "pass", ReadError::None},
        {"agile SHA-1", AgileEncrypted(plain, "pass", {"SHA1", 128}), "pass", ReadError::None},
        {"agile SHA-256", AgileEncrypted(plain, "pass", {"SHA256", 192}), "pass", ReadError::None},
        {"agile SHA-384", AgileEncrypted(plain, "pass", {"SHA384", 256}), "pass", ReadError::None},
        {"agile SHA-512", AgileEncrypted(plain, "pass", {}), "pass", ReadError::None},
        {"integrity untold", AgileEncrypted(plain, "pass", {"SHA512", 256, 9, false}), "pass",
         ReadError::None},
        {"no spins", AgileEncrypted(plain, "pass", {"SHA512", 256, 0}), "pass", ReadError::None},
        {"standard, nobody's", StandardEncrypted(plain, "VelvetSweatshop", 128), "",
         ReadError::None},
        {"agile, nobody's, another given", AgileEncrypted(plain, "VelvetSweatshop", {}), "x",
         ReadError::None},
        {"standard, wrong", StandardEncrypted(plain, "pass", 128), "Pass",
         ReadError::PasswordNeeded},
        {"agile, wrong", AgileEncrypted(plain, "pass", {}), "passs", ReadError::PasswordNeeded},
        {"standard, none", StandardEncrypted(plain, "pass", 128), "", ReadError::PasswordNeeded},
        {"agile, none", AgileEncrypted(plain, "pass", {}), "", ReadError::PasswordNeeded},
    };
    for (const CipherRow& row : rows) {
        SCOPED_TRACE(row.name);
        std::string package;
        EXPECT_TRUE(IsEncryptedPackage(row.file));
        EXPECT_EQ(DecryptPackage(row.file, row.password, package).error, row.error);
        EXPECT_EQ(package, row.error == ReadError::None ? plain : "");
    }
}

TEST(Decrypt, OpensOpenDocumentByItsPasswordAlone) {
    const std::string plain = Plain(5001);
    const auto file = [&](const char* derivation, const char* hash, std::size_t size = 5001) {
        return OpenEncrypted(plain, "pass", derivation, hash, size);
    };
    const CipherRow rows[] = {
        {"as offices write it", file("PBKDF2", "SHA256"), "pass", ReadError::None},
        {"the older hash", file("urn:x#pbkdf2", "SHA1"), "pass", ReadError::None},
        {"wrong", file("PBKDF2", "SHA256"), "Pass", ReadError::PasswordNeeded},
        {"none", file("PBKDF2", "SHA256"), "", ReadError::PasswordNeeded},
        {"another derivation", file("urn:x#argon2id", "SHA256"), "pass", ReadError::Unsupported},
        {"longer than told", file("PBKDF2", "SHA256", 5000), "pass", ReadError::Damaged},
        {"shorter than told", file("PBKDF2", "SHA256", 5002), "pass", ReadError::Damaged},
        {"not protected", MakeZip({{"mimetype", "x"}}), "pass", ReadError::None},
    };
    for (const CipherRow& row : rows) {
        SCOPED_TRACE(row.name);
        std::string package;
        EXPECT_EQ(OpenProtected(row.file, row.password, package).error, row.error);
        const auto parts = Package::Open(package);
        EXPECT_EQ(parts == nullptr ? "" : parts->Read("content.xml").value_or("none"),
                  row.error == ReadError::None && row.file.size() > 5000 ? plain : "");
        EXPECT_TRUE(parts == nullptr || !parts->Has("META-INF/manifest.xml"));
    }
}

TEST(Decrypt, ReadsBase64ToItsEnd) {
    const std::pair<const char*, const char*> rows[] = {
        {"", ""},         {"QUI=", "AB"},   {"QQ==", "A"},   {" Q\tU\nJ\rD ", "ABC"},
        {"+/z_", "none"}, {"Q=UI", "none"}, {"Q*==", "none"}};
    for (const auto& [text, bytes] : rows)
        EXPECT_EQ(FromBase64(text).value_or("none"), bytes) << text;
}

TEST(Decrypt, SegmentsAndBlocksEndWhereTheyEnd) {
    for (const std::size_t size : {2u, 15u, 16u, 17u, 4095u, 4096u, 4097u, 8192u}) {
        SCOPED_TRACE(size);
        const std::string plain = Plain(size).substr(0, size);
        std::string package;
        EXPECT_TRUE(
            DecryptPackage(AgileEncrypted(plain, "a", {"SHA1", 128, 1}), "a", package).ok());
        EXPECT_EQ(package, plain);
    }
}

TEST(Decrypt, PasswordIsWide) {
    // The writer takes Latin-1, the reader UTF-8; in the file both are UTF-16.
    std::string package;
    EXPECT_TRUE(
        DecryptPackage(AgileEncrypted("PK", "\xE9t\xE9", {}), "\xC3\xA9t\xC3\xA9", package).ok());
}

// Of the same length, since the file's own tables tell how long its streams are.
std::string Replaced(std::string text, std::string_view from, std::string_view to) {
    EXPECT_EQ(from.size(), to.size());
    text.replace(text.find(from), from.size(), to);
    return text;
}

TEST(Decrypt, SaysWhatItCannotRead) {
    const std::string agile = AgileEncrypted(Plain(), "a", {"SHA512", 256, 123});
    const std::string standard = StandardEncrypted(Plain(), "a", 128);
    const std::string info_start("\x03\0\x02\0\x24\0\0\0", 8);
    const struct {
        const char* name;
        std::string file;
        ReadError error;
    } rows[] = {
        {"no compound file", "PK", ReadError::Damaged},
        {"another cipher", Replaced(agile, "\"AES\"", "\"RC2\""), ReadError::Unsupported},
        {"another chaining", Replaced(agile, "ModeCBC", "ModeCFB"), ReadError::Unsupported},
        {"another hash", Replaced(agile, "\"SHA512\"", "\"TIGER9\""), ReadError::Unsupported},
        {"certificates", Replaced(agile, "x/password", "x/certific"), ReadError::Unsupported},
        {"more spins than anybody waits for",
         Replaced(agile, "spinCount=\"123\" saltSize=\"16\"", "spinCount=\"2000001\"          "),
         ReadError::Unsupported},
        {"negative spins", Replaced(agile, "spinCount=\"123\"", "spinCount=\"-12\""),
         ReadError::Damaged},
        {"RC4", Replaced(standard, info_start, std::string("\x03\0\x02\0\x04\0\0\0", 8)),
         ReadError::Unsupported},
        {"extensible", Replaced(standard, info_start, std::string("\x03\0\x03\0\x24\0\0\0", 8)),
         ReadError::Unsupported},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        std::string package;
        EXPECT_EQ(DecryptPackage(row.file, "a", package).error, row.error);
        EXPECT_TRUE(package.empty());
    }
}

TEST(Decrypt, ChangedBytesFailTheIntegrityCheck) {
    const std::string plain = Plain();
    std::string file = AgileEncrypted(plain, "a", {"SHA256", 128, 5});
    const std::size_t place = file.find(encrypting::NumberBytes(plain.size(), 8));
    ASSERT_NE(place, std::string::npos);
    file[place + 5000] = static_cast<char>(file[place + 5000] ^ 1);
    std::string package;
    EXPECT_EQ(DecryptPackage(file, "a", package).error, ReadError::Damaged);
}

TEST(Decrypt, SizeBeyondTheStreamIsDamage) {
    const std::string plain = Plain(5000);
    for (const std::string& file : {StandardEncrypted(plain, "a", 128),
                                    AgileEncrypted(plain, "a", {"SHA1", 128, 1, false})}) {
        std::string package;
        EXPECT_EQ(DecryptPackage(Replaced(file, encrypting::NumberBytes(5000, 8),
                                          encrypting::NumberBytes(6000, 8)),
                                 "a", package)
                      .error,
                  ReadError::Damaged);
    }
}

TEST(Decrypt, CorruptedFilesEnd) {
    std::mt19937 random(11);
    const std::string file = AgileEncrypted(Plain(6000), "a", {"SHA1", 128, 3});
    for (int round = 0; round < 300; ++round) {
        std::string copy = file.substr(0, round % 3 == 0 ? random() % file.size() : file.size());
        for (int i = 0; i < 3 && !copy.empty(); ++i)
            copy[random() % copy.size()] = static_cast<char>(random() & 0xFF);
        std::string package;
        const ReadEnd end = DecryptPackage(copy, "a", package);
        EXPECT_EQ(package.empty(), !end.ok()) << round;
    }
}

TEST(Decrypt, OpensTheCorpusFile) {
    std::ifstream file(ZORVANE_CORPUS "/docx/bug53475-password-is-pass.docx", std::ios::binary);
    if (!file)
        GTEST_SKIP() << "no documents";
    std::stringstream bytes;
    bytes << file.rdbuf();
    std::string package;
    ASSERT_TRUE(DecryptPackage(bytes.str(), "pass", package).ok());
    const std::unique_ptr<Package> opened = Package::Open(package);
    ASSERT_NE(opened, nullptr);
    EXPECT_TRUE(opened->Has("word/document.xml"));
}

}  // namespace
}  // namespace zorvane::decrypt_test
