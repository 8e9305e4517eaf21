// Encrypted Office Open XML packages for tests, made step by step as the public description tells.
#pragma once

#include <cstdint>
#include <openssl/evp.h>
#include <openssl/hmac.h>
#include <string>
#include <string_view>

#include "tests/support/compound_bytes.h"
#include "tests/support/zip_file.h"

namespace zorvane {

namespace encrypting {

inline const unsigned char* Data(std::string_view text) {
    return reinterpret_cast<const unsigned char*>(text.data());  // NOLINT
}
inline unsigned char* Data(std::string& text) {
    return reinterpret_cast<unsigned char*>(text.data());  // NOLINT
}

inline std::string NumberBytes(std::uint64_t value, int bytes) {
    std::string text;
    for (int i = 0; i < bytes; ++i)
        text += static_cast<char>(value >> (8 * i) & 0xFF);
    return text;
}

// Latin-1 as UTF-16.
inline std::string Wide(std::string_view latin) {
    std::string text;
    for (const char character : latin)
        text += std::string(1, character) + '\0';
    return text;
}

inline std::string Hash(const std::string& name, std::string_view bytes) {
    std::string digest(EVP_MAX_MD_SIZE, '\0');
    unsigned size = 0;
    EVP_Digest(bytes.data(), bytes.size(), Data(digest), &size, EVP_get_digestbyname(name.c_str()),
               nullptr);
    digest.resize(size);
    return digest;
}

inline std::string Spun(const std::string& hash, std::string_view salt, std::string_view password,
                        std::uint32_t count) {
    std::string digest = Hash(hash, std::string(salt) + Wide(password));
    for (std::uint32_t i = 0; i < count; ++i)
        digest = Hash(hash, NumberBytes(i, 4) + digest);
    return digest;
}

inline std::string Sized(std::string text, std::size_t size) {
    text.resize(size, '\x36');
    return text;
}

// AES without padding beyond zeros up to a whole block.
inline std::string Encrypt(std::string_view mode, std::string_view key, std::string_view start,
                           std::string plain) {
    plain.resize((plain.size() + 15) / 16 * 16);
    const std::string name = "AES-" + std::to_string(key.size() * 8) + "-" + std::string(mode);
    EVP_CIPHER_CTX* context = EVP_CIPHER_CTX_new();
    EVP_EncryptInit_ex(context, EVP_get_cipherbyname(name.c_str()), nullptr, Data(key),
                       start.empty() ? nullptr : Data(start));
    EVP_CIPHER_CTX_set_padding(context, 0);
    std::string secret(plain.size(), '\0');
    int written = 0;
    EVP_EncryptUpdate(context, Data(secret), &written, Data(plain), static_cast<int>(plain.size()));
    EVP_CIPHER_CTX_free(context);
    return secret;
}

inline std::string Base64(std::string_view bytes) {
    std::string text((bytes.size() + 2) / 3 * 4 + 1, '\0');
    const int size = EVP_EncodeBlock(Data(text), Data(bytes), static_cast<int>(bytes.size()));
    text.resize(static_cast<std::size_t>(size));
    return text;
}

inline std::string Compound(const std::string& info, const std::string& package) {
    CompoundWriter file;
    file.Add("EncryptionInfo", info);
    file.Add("EncryptedPackage", package);
    return file.Finish();
}

}  // namespace encrypting

/// AES of 128, 192 or 256 bits.
inline std::string StandardEncrypted(const std::string& plain, std::string_view password,
                                     std::size_t bits) {
    using namespace encrypting;
    const std::string salt = "0123456789abcdef";
    const std::string last = Hash("SHA1", Spun("SHA1", salt, password, 50'000) + NumberBytes(0, 4));
    std::string inner(64, '\x36');
    std::string outer(64, '\x5C');
    for (std::size_t i = 0; i < last.size(); ++i) {
        inner[i] = static_cast<char>(inner[i] ^ last[i]);
        outer[i] = static_cast<char>(outer[i] ^ last[i]);
    }
    const std::string key = (Hash("SHA1", inner) + Hash("SHA1", outer)).substr(0, bits / 8);
    const std::string verifier = "the verifier 16b";
    const std::string header = NumberBytes(0x24, 4) + NumberBytes(0, 4) +
                               NumberBytes(0x660E + (bits - 128) / 64, 4) + NumberBytes(0x8004, 4) +
                               NumberBytes(bits, 4) + NumberBytes(24, 4) + NumberBytes(0, 8) +
                               Wide("Provider") + NumberBytes(0, 2);
    const std::string info = NumberBytes(3, 2) + NumberBytes(2, 2) + NumberBytes(0x24, 4) +
                             NumberBytes(header.size(), 4) + header + NumberBytes(16, 4) + salt +
                             Encrypt("ECB", key, "", verifier) + NumberBytes(20, 4) +
                             Encrypt("ECB", key, "", Hash("SHA1", verifier));
    return Compound(info, NumberBytes(plain.size(), 8) + Encrypt("ECB", key, "", plain));
}

struct AgileChoice {
    std::string hash = "SHA512";
    std::size_t bits = 256;
    std::uint32_t spins = 1000;
    bool integrity = true;
};

inline std::string AgileEncrypted(const std::string& plain, std::string_view password,
                                  const AgileChoice& choice) {
    using namespace encrypting;
    const std::string& hash = choice.hash;
    const std::size_t size = choice.bits / 8;
    const std::string key_salt = "fedcba9876543210";
    const std::string data_salt = "the salt of data";
    const std::string secret = std::string("the secret key of the document..").substr(0, size);
    const std::string spun = Spun(hash, key_salt, password, choice.spins);
    const auto with_password = [&](std::string_view block, const std::string& value) {
        const std::string key = Sized(Hash(hash, spun + std::string(block)), size);
        return Base64(Encrypt("CBC", key, key_salt, value));
    };
    std::string package = NumberBytes(plain.size(), 8);
    for (std::size_t place = 0; place < plain.size(); place += 4096) {
        const std::string start = Sized(Hash(hash, data_salt + NumberBytes(place / 4096, 4)), 16);
        package += Encrypt("CBC", secret, start, plain.substr(place, 4096));
    }
    const auto with_secret = [&](std::string_view block, const std::string& value) {
        const std::string start = Sized(Hash(hash, data_salt + std::string(block)), 16);
        return Base64(Encrypt("CBC", secret, start, value));
    };
    const std::string verifier = "the verifier 16b";
    const std::string hmac_key = Hash(hash, "any key");
    std::string hmac(EVP_MAX_MD_SIZE, '\0');
    unsigned hmac_size = 0;
    HMAC(EVP_get_digestbyname(hash.c_str()), hmac_key.data(), static_cast<int>(hmac_key.size()),
         Data(package), package.size(), Data(hmac), &hmac_size);
    hmac.resize(hmac_size);
    const std::string common =
        " saltSize=\"16\" blockSize=\"16\" keyBits=\"" + std::to_string(choice.bits) +
        "\" hashSize=\"" + std::to_string(hmac_size) +
        "\" cipherAlgorithm=\"AES\" cipherChaining=\"ChainingModeCBC\" hashAlgorithm=\"" + hash +
        "\" saltValue=\"";
    std::string xml = "<encryption><keyData" + common + Base64(data_salt) + "\"/>";
    if (choice.integrity)
        xml += "<dataIntegrity encryptedHmacKey=\"" +
               with_secret("\x5F\xB2\xAD\x01\x0C\xB9\xE1\xF6", hmac_key) +
               "\" encryptedHmacValue=\"" + with_secret("\xA0\x67\x7F\x02\xB2\x2C\x84\x33", hmac) +
               "\"/>";
    xml += "<keyEncryptors><keyEncryptor uri=\"urn:x/password\"><p:encryptedKey spinCount=\"" +
           std::to_string(choice.spins) + "\"" + common + Base64(key_salt) +
           "\" encryptedVerifierHashInput=\"" +
           with_password("\xFE\xA7\xD2\x76\x3B\x4B\x9E\x79", verifier) +
           "\" encryptedVerifierHashValue=\"" +
           with_password("\xD7\xAA\x0F\x6D\x30\x61\x34\x4E", Hash(hash, verifier)) +
           "\" encryptedKeyValue=\"" + with_password("\x14\x6E\x0B\xE7\xAB\xAC\xD0\xD6", secret) +
           "\"/></keyEncryptor></keyEncryptors></encryption>";
    return Compound(NumberBytes(4, 2) + NumberBytes(4, 2) + NumberBytes(0x40, 4) + xml, package);
}

/// An OpenDocument package whose "content.xml" is `plain` (below 64 KB), of `size` bytes as the
/// list of parts has it.
inline std::string OpenEncrypted(const std::string& plain, std::string_view password,
                                 const std::string& derivation, const std::string& hash,
                                 std::size_t size) {
    using namespace encrypting;
    // A block that is not packed is deflated text, too.
    std::string packed =
        '\x01' + NumberBytes(plain.size(), 2) + NumberBytes(~plain.size() & 0xFFFF, 2) + plain;
    const std::string check = Hash(hash, packed.substr(0, 1024));
    const std::size_t filled = 16 - packed.size() % 16;
    packed.append(filled, static_cast<char>(filled));
    const std::string salt = "salt of 16 bytes";
    const std::string start = Hash(hash, password);
    std::string key(32, '\0');
    PKCS5_PBKDF2_HMAC(start.data(), static_cast<int>(start.size()), Data(salt), 16, 1000,
                      EVP_sha1(), 32, Data(key));
    const std::string name = hash == "SHA1" ? "sha1" : "sha256";
    const std::string manifest =
        R"(<m:manifest><m:file-entry m:full-path="mimetype"/><m:file-entry m:full-path="content.xml")"
        R"( m:size=")" +
        std::to_string(size) + R"("><m:encryption-data m:checksum-type="urn:x#)" + name +
        R"(-1k" m:checksum=")" + Base64(check) +
        R"("><m:algorithm m:algorithm-name="urn:x#aes256-cbc" m:initialisation-vector=")" +
        Base64("a vector of 16 b") +
        R"("/><m:start-key-generation m:start-key-generation-name="urn:x#)" + name +
        R"("/><m:key-derivation m:key-derivation-name=")" + derivation +
        R"(" m:key-size="32" m:iteration-count="1000" m:salt=")" + Base64(salt) +
        R"("/></m:encryption-data></m:file-entry></m:manifest>)";
    return MakeZip({{"mimetype", "application/vnd.oasis.opendocument.text"},
                    {"META-INF/manifest.xml", manifest},
                    {"content.xml", Encrypt("CBC", key, "a vector of 16 b", packed)}});
}

}  // namespace zorvane
