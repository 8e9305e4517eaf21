#include "load/readers/opendocument/open_cipher.h"

#include <algorithm>
#include <map>
#include <openssl/evp.h>
#include <zip.h>
#include <zlib.h>

#include "load/readers/container/crypto_tools.h"
#include "load/readers/container/xml_part.h"

namespace zorvane {
namespace {

constexpr std::string_view kManifest = "META-INF/manifest.xml";
constexpr std::size_t kChecked = 1024;  // bytes of a part that its checksum is of
constexpr std::size_t kBlock = 16;      // AES has no other

/// How one part is enciphered.
struct PartCipher {
    std::size_t size = 0;  ///< of the unpacked part
    HashKind start_hash = HashKind::Sha1;
    HashKind check_hash = HashKind::Sha1;
    std::string check;
    std::string vector;
    std::string salt;
    std::int32_t rounds = 0;
    std::int32_t key_size = 0;
};
using PartCiphers = std::map<std::string, PartCipher, std::less<>>;

bool Holds(std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
}

HashKind HashNamed(std::string_view name) {
    return Holds(name, "sha256") ? HashKind::Sha256 : HashKind::Sha1;
}

ReadEnd NotRead() {
    return ReadEnd::Fault(ReadError::Unsupported,
                          "the document is encrypted in a way that is not read (only AES with "
                          "PBKDF2 is); save it without a password");
}

ReadEnd ReadCipher(const pugi::xml_node& entry, PartCipher& cipher) {
    constexpr std::int32_t kMostRounds = 10'000'000;  // a hundred times what offices write
    const pugi::xml_node data = Child(entry, "encryption-data");
    const pugi::xml_node algorithm = Child(data, "algorithm");
    const pugi::xml_node key = Child(data, "key-derivation");
    const std::string_view derivation = Attribute(key, "key-derivation-name");
    cipher.size = static_cast<std::size_t>(std::max(0, NumberOf(Attribute(entry, "size"), 0)));
    cipher.start_hash =
        HashNamed(Attribute(Child(data, "start-key-generation"), "start-key-generation-name"));
    cipher.check_hash = HashNamed(Attribute(data, "checksum-type"));
    cipher.check = FromBase64(Attribute(data, "checksum")).value_or("");
    cipher.vector = FromBase64(Attribute(algorithm, "initialisation-vector")).value_or("");
    cipher.salt = FromBase64(Attribute(key, "salt")).value_or("");
    cipher.rounds = NumberOf(Attribute(key, "iteration-count"), 0);
    cipher.key_size = NumberOf(Attribute(key, "key-size"), 0);
    const bool read = Holds(Attribute(algorithm, "algorithm-name"), "-cbc") &&
                      (derivation == "PBKDF2" || Holds(derivation, "pbkdf2")) &&
                      cipher.rounds > 0 && cipher.rounds <= kMostRounds &&
                      (cipher.key_size == 16 || cipher.key_size == 24 || cipher.key_size == 32);
    return read ? ReadEnd::Ok() : NotRead();
}

ReadEnd ReadCiphers(Package& package, PartCiphers& ciphers) {
    XmlPart manifest;
    if (ReadEnd end = XmlPart::Read(package, kManifest, manifest); !end.ok())
        return end;
    for (const pugi::xml_node& entry : manifest.Root().children()) {
        if (!Child(entry, "encryption-data"))
            continue;
        PartCipher cipher;
        if (ReadEnd end = ReadCipher(entry, cipher); !end.ok())
            return end;
        ciphers.emplace(Attribute(entry, "full-path"), std::move(cipher));
    }
    return ReadEnd::Ok();
}

const unsigned char* Bytes(const std::string& text) {
    return reinterpret_cast<const unsigned char*>(text.data());  // NOLINT: the libraries' byte
}

std::string KeyOf(const PartCipher& cipher, std::string_view password) {
    const std::string start = Hasher(cipher.start_hash).Digest({password});
    std::string key(static_cast<std::size_t>(cipher.key_size), '\0');
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): OpenSSL's type of a byte
    auto* place = reinterpret_cast<unsigned char*>(key.data());
    const bool made = PKCS5_PBKDF2_HMAC(start.data(), static_cast<int>(start.size()),
                                        Bytes(cipher.salt), static_cast<int>(cipher.salt.size()),
                                        cipher.rounds, EVP_sha1(), cipher.key_size, place) == 1;
    return made ? key : std::string();
}

/// What no password opens is damaged.
bool IsWhole(const PartCipher& cipher, std::string_view bytes) {
    return cipher.vector.size() == kBlock && !bytes.empty() && bytes.size() % kBlock == 0;
}

/// False where it is not what was enciphered: another password, or damage. `bytes` are whole.
bool Decipher(const PartCipher& cipher, std::string_view password, std::string& bytes) {
    AesDecryptor aes(CipherMode::Cbc, KeyOf(cipher, password));
    if (!aes.Decrypt(cipher.vector, bytes.data(), bytes.size()))
        return false;
    // The last byte tells how many were added to fill a block.
    const auto filled = static_cast<unsigned char>(bytes.back());
    if (filled == 0 || filled > kBlock)
        return false;
    bytes.resize(bytes.size() - filled);
    const std::string_view begin = std::string_view(bytes).substr(0, kChecked);
    return Hasher(cipher.check_hash).Digest({begin}) == cipher.check;
}

/// Raw deflated bytes, in the size that the list of parts tells.
ReadEnd Unpack(const std::string& packed, std::size_t size, std::string& part) {
    if (size > kMaxPartBytes)
        return ReadEnd::Fault(ReadError::TooLarge, "a part of the document is too large");
    part.assign(size, '\0');
    z_stream stream{};
    if (inflateInit2(&stream, -MAX_WBITS) != Z_OK)
        return ReadEnd::Fault(ReadError::TooLarge);
    stream.next_in = const_cast<Bytef*>(Bytes(packed));  // NOLINT: which is only read
    stream.avail_in = static_cast<uInt>(packed.size());
    stream.next_out = reinterpret_cast<Bytef*>(part.data());  // NOLINT: zlib's type of a byte
    stream.avail_out = static_cast<uInt>(part.size());
    const bool whole = inflate(&stream, Z_FINISH) == Z_STREAM_END && stream.avail_out == 0;
    inflateEnd(&stream);
    return whole ? ReadEnd::Ok()
                 : ReadEnd::Fault(ReadError::Damaged, "a part of the document is damaged");
}

/// No reader looks at these, and each costs as much as a text.
bool IsNotEncrypted(std::string_view name) {
    return name.ends_with('/') || name.starts_with("Thumbnails/") ||
           name.starts_with("Configurations2/") || name.starts_with("META-INF/");
}

using Parts = std::map<std::string, std::string, std::less<>>;

ReadEnd DecipherParts(Package& package, const PartCiphers& ciphers, std::string_view password,
                      Parts& parts) {
    for (const std::string& name : package.Names()) {
        if (IsNotEncrypted(name))
            continue;
        ReadError error = ReadError::None;
        std::optional<std::string> bytes = package.Read(name, &error);
        if (!bytes)
            return ReadEnd::Fault(error, "a part of the document is damaged");
        const auto cipher = ciphers.find(name);
        if (cipher == ciphers.end()) {
            parts[name] = std::move(*bytes);
            continue;
        }
        if (!IsWhole(cipher->second, *bytes))
            return ReadEnd::Fault(ReadError::Damaged, "a part of the document is damaged");
        if (!Decipher(cipher->second, password, *bytes))
            return ReadEnd::Fault(ReadError::PasswordNeeded, "the document is encrypted");
        if (ReadEnd end = Unpack(*bytes, cipher->second.size, parts[name]); !end.ok())
            return end;
    }
    return ReadEnd::Ok();
}

bool AddParts(zip_t* archive, const Parts& parts) {
    return std::all_of(parts.begin(), parts.end(), [archive](const auto& part) {
        zip_source_t* bytes = zip_source_buffer(archive, part.second.data(), part.second.size(), 0);
        const zip_int64_t place =
            bytes == nullptr ? -1 : zip_file_add(archive, part.first.c_str(), bytes, 0);
        if (place < 0 && bytes != nullptr)
            zip_source_free(bytes);
        return place >= 0 && zip_set_file_compression(archive, static_cast<zip_uint64_t>(place),
                                                      ZIP_CM_STORE, 0) == 0;
    });
}

bool TakeBytes(zip_source_t* target, std::string& plain) {
    zip_stat_t facts;
    if (zip_source_stat(target, &facts) != 0 || zip_source_open(target) != 0)
        return false;
    plain.resize(static_cast<std::size_t>(facts.size));
    const zip_int64_t read = zip_source_read(target, plain.data(), plain.size());
    zip_source_close(target);
    return read >= 0 && static_cast<std::size_t>(read) == plain.size();
}

bool Pack(const Parts& parts, std::string& plain) {
    zip_source_t* target = zip_source_buffer_create(nullptr, 0, 0, nullptr);
    if (target == nullptr)
        return false;
    zip_source_keep(target);
    zip_t* archive = zip_open_from_source(target, ZIP_TRUNCATE, nullptr);
    bool packed = archive != nullptr && AddParts(archive, parts) && zip_close(archive) == 0;
    if (archive != nullptr && !packed)
        zip_discard(archive);
    packed = packed && TakeBytes(target, plain);
    zip_source_free(target);
    return packed;
}

}  // namespace

ReadEnd DecipherOpenDocument(Package& package, std::string_view password, std::string& plain) {
    PartCiphers ciphers;
    if (ReadEnd end = ReadCiphers(package, ciphers); !end.ok())
        return end;
    if (password.empty())
        return ReadEnd::Fault(ReadError::PasswordNeeded, "the document is encrypted");
    Parts parts;
    if (ReadEnd end = DecipherParts(package, ciphers, password, parts); !end.ok())
        return end;
    return Pack(parts, plain) ? ReadEnd::Ok() : ReadEnd::Fault(ReadError::TooLarge);
}

}  // namespace zorvane
