#include "load/readers/container/package_cipher.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "common/base/text_encoding.h"
#include "load/readers/container/crypto_tools.h"
#include "load/readers/container/xml_part.h"

namespace zorvane {
namespace {

constexpr std::size_t kBlock = 16;              // AES has no other
constexpr std::size_t kSizeField = 8;           // in front of the encrypted bytes
constexpr std::size_t kLongestPassword = 1024;  // the format's own limit is 255 characters

ReadEnd Damaged() {
    return ReadEnd::Fault(ReadError::Damaged, "the encryption of the document is damaged");
}
ReadEnd Unsupported() {
    return ReadEnd::Fault(ReadError::Unsupported, "the document's encryption cannot be read");
}
ReadEnd WrongPassword() {
    return ReadEnd::Fault(ReadError::PasswordNeeded, "the password is missing or wrong");
}

std::uint32_t Number32(std::string_view bytes, std::size_t place) {
    std::uint32_t number = 0;
    for (std::size_t i = 0; i < 4 && place + i < bytes.size(); ++i)
        number |= std::uint32_t{static_cast<unsigned char>(bytes[place + i])} << (8 * i);
    return number;
}

std::string PasswordBytes(std::string_view password) {
    std::string bytes;
    for (const char16_t unit : ToUtf16(password.substr(0, kLongestPassword))) {
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    }
    return bytes;
}

// The plain length stands in front in 8 bytes (the upper four are reserved in old files); what is
// behind the package is padding.
std::optional<std::size_t> PlainSize(std::string_view encrypted) {
    if (encrypted.size() < kSizeField)
        return std::nullopt;
    const std::size_t size = Number32(encrypted, 0);
    if (size > encrypted.size() - kSizeField)
        return std::nullopt;
    return size;
}

void KeepPlain(std::size_t size, std::string& encrypted) {
    encrypted.erase(0, kSizeField);
    encrypted.resize(size);
}

std::string Fitted(std::string_view bytes, std::size_t size) {
    std::string fitted(size, '\x36');
    bytes.substr(0, size).copy(fitted.data(), size);
    return fitted;
}

// ---- Standard encryption: AES in ECB mode, SHA-1 ----

struct StandardInfo {
    std::size_t key_size = 16;
    std::string_view salt;
    std::string_view verifier;
    std::string_view verifier_hash;
};

ReadEnd ReadStandardInfo(std::string_view info, StandardInfo& facts) {
    constexpr std::size_t kHeader = 12;
    constexpr std::uint32_t kSha1 = 0x8004;
    constexpr std::uint32_t kAes128 = 0x660E;
    constexpr std::uint32_t kAes256 = 0x6610;
    const std::size_t header_size = Number32(info, 8);
    if (info.size() < kHeader + 32 || header_size < 32 || header_size > info.size() - kHeader)
        return Damaged();
    const std::uint32_t algorithm = Number32(info, kHeader + 8);
    const std::uint32_t hash = Number32(info, kHeader + 12);
    if (algorithm < kAes128 || algorithm > kAes256 || (hash != kSha1 && hash != 0))
        return Unsupported();
    const std::string_view verifier = info.substr(kHeader + header_size);
    if (verifier.size() < 4 + 16 + 16 + 4 + 32 || Number32(verifier, 0) != 16)
        return Damaged();
    facts.key_size = 16 + 8 * std::size_t{algorithm - kAes128};
    facts.salt = verifier.substr(4, 16);
    facts.verifier = verifier.substr(20, 16);
    facts.verifier_hash = verifier.substr(40, 32);
    return ReadEnd::Ok();
}

std::string StandardKey(const StandardInfo& facts, std::string_view password, Hasher& sha1) {
    constexpr std::uint32_t kSpins = 50'000;
    const std::string spun = sha1.Spin(sha1.Digest({facts.salt, PasswordBytes(password)}), kSpins);
    const std::string last = sha1.Digest({spun, LittleEndian32(0)});
    const auto derived = [&](char pad) {
        std::string block(64, pad);
        for (std::size_t i = 0; i < last.size(); ++i)
            block[i] = static_cast<char>(block[i] ^ last[i]);
        return sha1.Digest({block});
    };
    return (derived('\x36') + derived('\x5C')).substr(0, facts.key_size);
}

ReadEnd DecipherStandard(std::string_view info, std::string_view password, std::string& encrypted) {
    StandardInfo facts;
    if (ReadEnd end = ReadStandardInfo(info, facts); !end.ok())
        return end;
    Hasher sha1(HashKind::Sha1);
    AesDecryptor aes(CipherMode::Ecb, StandardKey(facts, password, sha1));
    std::string verifier(facts.verifier);
    std::string verifier_hash(facts.verifier_hash);
    if (!aes.Decrypt({}, verifier.data(), verifier.size()) ||
        !aes.Decrypt({}, verifier_hash.data(), verifier_hash.size()))
        return Unsupported();
    if (sha1.Digest({verifier}) != verifier_hash.substr(0, sha1.Size()))
        return WrongPassword();
    const std::optional<std::size_t> size = PlainSize(encrypted);
    const std::size_t blocks = (encrypted.size() - (size ? kSizeField : 0)) / kBlock * kBlock;
    if (!size || *size > blocks || !aes.Decrypt({}, encrypted.data() + kSizeField, blocks))
        return Damaged();
    KeepPlain(*size, encrypted);
    return ReadEnd::Ok();
}

// ---- Agile encryption: an XML description, AES in CBC mode, any SHA ----

constexpr std::string_view kVerifierInputBlock = "\xFE\xA7\xD2\x76\x3B\x4B\x9E\x79";
constexpr std::string_view kVerifierHashBlock = "\xD7\xAA\x0F\x6D\x30\x61\x34\x4E";
constexpr std::string_view kKeyValueBlock = "\x14\x6E\x0B\xE7\xAB\xAC\xD0\xD6";
constexpr std::string_view kHmacKeyBlock = "\x5F\xB2\xAD\x01\x0C\xB9\xE1\xF6";
constexpr std::string_view kHmacValueBlock = "\xA0\x67\x7F\x02\xB2\x2C\x84\x33";

// The attributes that the description of the key and of the data share.
struct CipherFacts {
    std::size_t key_size = 0;
    HashKind hash = HashKind::Sha512;
    std::string salt;
};

struct AgileInfo {
    CipherFacts data;
    CipherFacts key;
    std::uint32_t spins = 0;
    std::string verifier_input;
    std::string verifier_hash;
    std::string key_value;
    std::string hmac_key;  // empty: integrity is not told
    std::string hmac_value;
};

std::optional<HashKind> HashNamed(std::string_view name) {
    constexpr std::pair<std::string_view, HashKind> kNames[] = {
        {"SHA1", HashKind::Sha1},      {"SHA-1", HashKind::Sha1},    {"SHA256", HashKind::Sha256},
        {"SHA-256", HashKind::Sha256}, {"SHA384", HashKind::Sha384}, {"SHA-384", HashKind::Sha384},
        {"SHA512", HashKind::Sha512},  {"SHA-512", HashKind::Sha512}};
    for (const auto& [known, kind] : kNames) {
        if (known == name)
            return kind;
    }
    return std::nullopt;
}

std::string Bytes64(const pugi::xml_node& node, std::string_view attribute) {
    return FromBase64(Attribute(node, attribute)).value_or(std::string());
}

ReadEnd ReadCipherFacts(const pugi::xml_node& node, CipherFacts& facts) {
    const std::optional<HashKind> hash = HashNamed(Attribute(node, "hashAlgorithm"));
    const std::int32_t bits = NumberOf(Attribute(node, "keyBits"), 0);
    if (!hash || Attribute(node, "cipherAlgorithm") != "AES" ||
        Attribute(node, "cipherChaining") != "ChainingModeCBC" ||
        (bits != 128 && bits != 192 && bits != 256) ||
        NumberOf(Attribute(node, "blockSize"), 0) != static_cast<std::int32_t>(kBlock))
        return Unsupported();
    facts.hash = *hash;
    facts.key_size = static_cast<std::size_t>(bits) / 8;
    facts.salt = Bytes64(node, "saltValue");
    return facts.salt.empty() ? Damaged() : ReadEnd::Ok();
}

pugi::xml_node PasswordKey(const pugi::xml_node& root) {
    for (const pugi::xml_node& encryptor : Child(root, "keyEncryptors").children()) {
        if (Attribute(encryptor, "uri").ends_with("/password"))
            return Child(encryptor, "encryptedKey");
    }
    return {};
}

ReadEnd ReadAgileInfo(std::string_view info, AgileInfo& facts) {
    // Documents have 100,000. The format allows 10 million, which take 10 seconds for a password;
    // so many are there to keep the reader busy.
    constexpr std::int32_t kMostSpins = 2'000'000;
    XmlPart xml;
    if (!XmlPart::Parse(std::string(info.substr(std::min(kSizeField, info.size()))), xml).ok())
        return Damaged();
    const pugi::xml_node data = Child(xml.Root(), "keyData");
    const pugi::xml_node key = PasswordKey(xml.Root());
    if (!data)
        return Damaged();
    if (!key)  // opened by certificates alone
        return Unsupported();
    if (ReadEnd end = ReadCipherFacts(data, facts.data); !end.ok())
        return end;
    if (ReadEnd end = ReadCipherFacts(key, facts.key); !end.ok())
        return end;
    const std::int32_t spins = NumberOf(Attribute(key, "spinCount"), -1);
    facts.spins = static_cast<std::uint32_t>(std::clamp(spins, 0, kMostSpins));
    facts.verifier_input = Bytes64(key, "encryptedVerifierHashInput");
    facts.verifier_hash = Bytes64(key, "encryptedVerifierHashValue");
    facts.key_value = Bytes64(key, "encryptedKeyValue");
    const pugi::xml_node integrity = Child(xml.Root(), "dataIntegrity");
    facts.hmac_key = Bytes64(integrity, "encryptedHmacKey");
    facts.hmac_value = Bytes64(integrity, "encryptedHmacValue");
    if (spins > kMostSpins)
        return Unsupported();
    return spins < 0 ? Damaged() : ReadEnd::Ok();
}

// The values of the password's key: each with a key of its own, all with the salt as the start.
class KeyOpener {
  public:
    KeyOpener(const CipherFacts& facts, std::uint32_t spins, std::string_view password)
        : facts_(facts),
          hasher_(facts.hash),
          spun_(hasher_.Spin(hasher_.Digest({facts.salt, PasswordBytes(password)}), spins)) {}

    bool Open(std::string_view block_key, std::string& value) {
        AesDecryptor aes(CipherMode::Cbc,
                         Fitted(hasher_.Digest({spun_, block_key}), facts_.key_size));
        return aes.Decrypt(Fitted(facts_.salt, kBlock), value.data(), value.size());
    }
    Hasher& Hash() { return hasher_; }

  private:
    const CipherFacts& facts_;
    Hasher hasher_;
    std::string spun_;
};

// The hash of the verifier tells a right password from a wrong one.
ReadEnd OpenKey(const AgileInfo& facts, std::string_view password, std::string& secret) {
    KeyOpener opener(facts.key, facts.spins, password);
    std::string input = facts.verifier_input;
    std::string hash = facts.verifier_hash;
    secret = facts.key_value;
    if (!opener.Hash().Usable())
        return Unsupported();
    if (input.empty() || hash.size() < opener.Hash().Size() || secret.size() < facts.data.key_size)
        return Damaged();
    if (!opener.Open(kVerifierInputBlock, input) || !opener.Open(kVerifierHashBlock, hash) ||
        !opener.Open(kKeyValueBlock, secret))
        return Damaged();
    if (opener.Hash().Digest({input}) != hash.substr(0, opener.Hash().Size()))
        return WrongPassword();
    secret.resize(facts.data.key_size);
    return ReadEnd::Ok();
}

bool OpenDataValue(const AgileInfo& facts, std::string_view secret, std::string_view block_key,
                   std::string& value) {
    Hasher hasher(facts.data.hash);
    AesDecryptor aes(CipherMode::Cbc, secret);
    const std::string start = Fitted(hasher.Digest({facts.data.salt, block_key}), kBlock);
    if (!aes.Decrypt(start, value.data(), value.size()))
        return false;
    value.resize(std::min(value.size(), hasher.Size()));
    return true;
}

bool IsIntact(const AgileInfo& facts, std::string_view secret, std::string_view encrypted) {
    if (facts.hmac_key.empty() && facts.hmac_value.empty())
        return true;
    std::string key = facts.hmac_key;
    std::string value = facts.hmac_value;
    return OpenDataValue(facts, secret, kHmacKeyBlock, key) &&
           OpenDataValue(facts, secret, kHmacValueBlock, value) &&
           Hasher(facts.data.hash).Hmac(key, encrypted) == value;
}

bool DecipherSegments(const AgileInfo& facts, std::string_view secret, std::string& encrypted) {
    constexpr std::size_t kSegment = 4096;
    Hasher hasher(facts.data.hash);
    AesDecryptor aes(CipherMode::Cbc, secret);
    const std::size_t end = kSizeField + (encrypted.size() - kSizeField) / kBlock * kBlock;
    std::uint32_t number = 0;
    for (std::size_t place = kSizeField; place < end; place += kSegment, ++number) {
        const std::string start =
            Fitted(hasher.Digest({facts.data.salt, LittleEndian32(number)}), kBlock);
        if (!aes.Decrypt(start, encrypted.data() + place, std::min(kSegment, end - place)))
            return false;
    }
    return true;
}

ReadEnd DecipherAgile(std::string_view info, std::string_view password, std::string& encrypted) {
    AgileInfo facts;
    if (ReadEnd end = ReadAgileInfo(info, facts); !end.ok())
        return end;
    std::string secret;
    if (ReadEnd end = OpenKey(facts, password, secret); !end.ok())
        return end;
    const std::optional<std::size_t> size = PlainSize(encrypted);
    if (!size || *size > (encrypted.size() - kSizeField) / kBlock * kBlock)
        return Damaged();
    if (!IsIntact(facts, secret, encrypted) || !DecipherSegments(facts, secret, encrypted))
        return Damaged();
    KeepPlain(*size, encrypted);
    return ReadEnd::Ok();
}

}  // namespace

ReadEnd DecipherPackage(std::string_view info, std::string_view password, std::string& encrypted) {
    constexpr std::uint32_t kAesFlag = 0x20;
    if (info.size() < kSizeField)
        return Damaged();
    const std::uint32_t version = Number32(info, 0);
    const std::uint32_t major = version & 0xFFFF;
    const std::uint32_t minor = version >> 16;
    if (major == 4 && minor == 4)
        return DecipherAgile(info, password, encrypted);
    const bool standard = major >= 2 && major <= 4 && minor == 2;
    if (standard && (Number32(info, 4) & kAesFlag) != 0)
        return DecipherStandard(info, password, encrypted);
    return Unsupported();
}

}  // namespace zorvane
