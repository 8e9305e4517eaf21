// The few operations of cryptography that encrypted documents need: hashes, AES without padding,
// HMAC, Base64. Uses OpenSSL.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <openssl/types.h>
#include <optional>
#include <string>
#include <string_view>

namespace zorvane {

enum class HashKind : std::uint8_t { Sha1, Sha256, Sha384, Sha512 };

/// One hash, many times: the context is kept.
class Hasher {
  public:
    explicit Hasher(HashKind kind);

    /// False where the machine's library refuses this hash; digests are then empty.
    bool Usable() const { return size_ != 0; }
    std::size_t Size() const { return size_; }
    /// Over the parts as if they were one.
    std::string Digest(std::initializer_list<std::string_view> parts);
    /// `count` times: digest = hash(number of the round in 4 bytes + digest).
    std::string Spin(std::string digest, std::uint32_t count);
    /// Keyed (RFC 2104).
    std::string Hmac(std::string_view key, std::string_view bytes);

  private:
    bool DigestInto(std::initializer_list<std::string_view> parts, unsigned char* digest);

    std::shared_ptr<EVP_MD> algorithm_;
    std::shared_ptr<EVP_MD_CTX> context_;
    std::size_t size_ = 0;
};

enum class CipherMode : std::uint8_t { Ecb, Cbc };

/// AES by the length of the key: 16, 24 or 32 bytes. Works in place on whole blocks of 16 bytes.
class AesDecryptor {
  public:
    AesDecryptor(CipherMode mode, std::string_view key);

    /// `size` is a multiple of 16; `start` (16 bytes) is the initialization vector, unused for ECB.
    [[nodiscard]] bool Decrypt(std::string_view start, char* bytes, std::size_t size);

  private:
    std::shared_ptr<EVP_CIPHER_CTX> context_;
    bool usable_ = false;
};

/// Blanks and line ends are passed over; nothing for a text that is no Base64.
std::optional<std::string> FromBase64(std::string_view text);

/// The number in 4 bytes, lowest first.
std::string LittleEndian32(std::uint32_t number);

}  // namespace zorvane
