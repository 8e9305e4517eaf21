#include "load/readers/container/crypto_tools.h"

#include <algorithm>
#include <array>
#include <limits>
#include <openssl/evp.h>

#include "common/base/ascii.h"

namespace zorvane {
namespace {

constexpr std::size_t kAesBlock = 16;

const char* NameOf(HashKind kind) {
    switch (kind) {
        case HashKind::Sha1:
            return "SHA1";
        case HashKind::Sha256:
            return "SHA256";
        case HashKind::Sha384:
            return "SHA384";
        case HashKind::Sha512:
            return "SHA512";
    }
    return "";
}

std::size_t BlockOf(std::size_t digest_size) {
    return digest_size > 32 ? 128 : 64;
}

const EVP_CIPHER* CipherOf(CipherMode mode, std::size_t key_size) {
    const bool cbc = mode == CipherMode::Cbc;
    switch (key_size) {
        case 16:
            return cbc ? EVP_aes_128_cbc() : EVP_aes_128_ecb();
        case 24:
            return cbc ? EVP_aes_192_cbc() : EVP_aes_192_ecb();
        case 32:
            return cbc ? EVP_aes_256_cbc() : EVP_aes_256_ecb();
        default:
            return nullptr;
    }
}

const unsigned char* Bytes(std::string_view text) {
    return reinterpret_cast<const unsigned char*>(text.data());  // NOLINT: OpenSSL's type of a byte
}

std::int32_t Base64Value(char character) {
    if (IsAsciiUpper(character))
        return character - 'A';
    if (IsAsciiLower(character))
        return character - 'a' + 26;
    if (IsAsciiDigit(character))
        return character - '0' + 52;
    if (character == '+')
        return 62;
    return character == '/' ? 63 : -1;
}

}  // namespace

Hasher::Hasher(HashKind kind)
    : algorithm_(EVP_MD_fetch(nullptr, NameOf(kind), nullptr), EVP_MD_free),
      context_(EVP_MD_CTX_new(), EVP_MD_CTX_free) {
    if (algorithm_ && context_)
        size_ = static_cast<std::size_t>(EVP_MD_get_size(algorithm_.get()));
}

bool Hasher::DigestInto(std::initializer_list<std::string_view> parts, unsigned char* digest) {
    if (!Usable() || EVP_DigestInit_ex(context_.get(), algorithm_.get(), nullptr) != 1)
        return false;
    for (const std::string_view part : parts) {
        if (EVP_DigestUpdate(context_.get(), part.data(), part.size()) != 1)
            return false;
    }
    return EVP_DigestFinal_ex(context_.get(), digest, nullptr) == 1;
}

std::string Hasher::Digest(std::initializer_list<std::string_view> parts) {
    std::string digest(size_, '\0');
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): OpenSSL's type of a byte
    if (!DigestInto(parts, reinterpret_cast<unsigned char*>(digest.data())))
        digest.clear();
    return digest;
}

std::string Hasher::Spin(std::string digest, std::uint32_t count) {
    std::array<unsigned char, 4 + EVP_MAX_MD_SIZE> round{};
    const std::size_t kept = std::min(digest.size(), size_);
    std::copy_n(Bytes(digest), kept, round.begin() + 4);
    for (std::uint32_t i = 0; i < count; ++i) {
        for (std::size_t byte = 0; byte < 4; ++byte)
            round[byte] = static_cast<unsigned char>(i >> (8 * byte));
        // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): as above
        const std::string_view all(reinterpret_cast<const char*>(round.data()), 4 + size_);
        if (!DigestInto({all}, round.data() + 4))
            return {};
    }
    std::copy_n(round.begin() + 4, kept, digest.begin());
    return digest;
}

std::string Hasher::Hmac(std::string_view key, std::string_view bytes) {
    std::string inner(BlockOf(size_), '\0');
    const std::string short_key = key.size() > inner.size() ? Digest({key}) : std::string(key);
    std::copy(short_key.begin(), short_key.end(), inner.begin());
    std::string outer = inner;
    for (char& byte : inner)
        byte = static_cast<char>(byte ^ 0x36);
    for (char& byte : outer)
        byte = static_cast<char>(byte ^ 0x5C);
    return Digest({outer, Digest({inner, bytes})});
}

AesDecryptor::AesDecryptor(CipherMode mode, std::string_view key)
    : context_(EVP_CIPHER_CTX_new(), EVP_CIPHER_CTX_free) {
    const EVP_CIPHER* cipher = CipherOf(mode, key.size());
    usable_ = cipher != nullptr && context_ &&
              EVP_DecryptInit_ex(context_.get(), cipher, nullptr, Bytes(key), nullptr) == 1;
}

bool AesDecryptor::Decrypt(std::string_view start, char* bytes, std::size_t size) {
    constexpr std::size_t kPiece = std::size_t{1} << 20;
    if (!usable_ || size % kAesBlock != 0 || (!start.empty() && start.size() != kAesBlock))
        return false;
    const unsigned char* vector = start.empty() ? nullptr : Bytes(start);
    if (EVP_DecryptInit_ex(context_.get(), nullptr, nullptr, nullptr, vector) != 1 ||
        EVP_CIPHER_CTX_set_padding(context_.get(), 0) != 1)
        return false;
    for (std::size_t done = 0; done < size; done += kPiece) {
        const int piece = static_cast<int>(std::min(kPiece, size - done));
        int written = 0;
        // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): as above
        auto* place = reinterpret_cast<unsigned char*>(bytes + done);
        if (EVP_DecryptUpdate(context_.get(), place, &written, place, piece) != 1 ||
            written != piece)
            return false;
    }
    return true;
}

std::optional<std::string> FromBase64(std::string_view text) {
    std::string bytes;
    std::uint32_t bits = 0;
    int count = 0;
    bool ended = false;
    for (const char character : text) {
        if (character == ' ' || character == '\n' || character == '\r' || character == '\t')
            continue;
        ended = ended || character == '=';
        if (character == '=')
            continue;
        const std::int32_t value = Base64Value(character);
        if (value < 0 || ended)
            return std::nullopt;
        bits = (bits << 6) | static_cast<std::uint32_t>(value);
        count += 6;
        if (count >= 8) {
            count -= 8;
            bytes += static_cast<char>((bits >> count) & 0xFF);
        }
    }
    return bytes;
}

std::string LittleEndian32(std::uint32_t number) {
    std::string bytes(4, '\0');
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<char>((number >> (8 * i)) & 0xFF);
    return bytes;
}

}  // namespace zorvane
