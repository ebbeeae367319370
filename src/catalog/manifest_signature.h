#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kitbay::catalog {

/// What signs manifests and identifies their maker: Ed25519, in libsodium's representation.
using PublicKey = std::array<unsigned char, 32>;
using SecretKey = std::array<unsigned char, 64>;

/// How many hexadecimal digits a public key has.
inline constexpr std::size_t kKeyDigits = 64;

/// The last comment of a manifest, which signs every byte before its own value.
struct ManifestSignature {
  std::string key_id;           ///< the first digits of the key that it was made with
  std::string file;             ///< the manifest's file name: a key may sign several sources
  std::uint64_t serial = 0;     ///< grows with every manifest of the source
  std::chrono::sys_days until;  ///< the last day on which the manifest holds
  std::array<unsigned char, 64> value{};
  std::size_t signed_bytes = 0;  ///< how many bytes from the manifest's start it signs
};

/// The signature at the end of a manifest's bytes; empty if they end otherwise. Throws
/// `base::Failure` if there is one that cannot be read.
std::optional<ManifestSignature> FindSignature(std::string_view manifest);

/// Whether the signature was made with that key from these bytes.
bool IsSignedWith(std::string_view manifest, const ManifestSignature& signature,
                  const PublicKey& key);

/// The manifest with that file name, with a signature that replaces an existing one. Throws
/// `base::Failure` if it has one that cannot be read, or if no manifest may have that name.
std::string SignManifest(std::string_view manifest, const std::string& file, const SecretKey& key,
                         std::uint64_t serial, std::chrono::sys_days until);

/// The key of that many hexadecimal digits; none where the text is anything else.
std::optional<PublicKey> ReadKey(std::string_view digits);

/// A key in lower-case digits, and its first digits, by which a signature names it.
std::string KeyDigits(const PublicKey& key);
std::string KeyId(const PublicKey& key);

/// "2026-11-21".
std::string DateText(std::chrono::sys_days day);

/// The day that a text in that form names; empty if it names none.
std::optional<std::chrono::sys_days> ReadDate(std::string_view text);

}  // namespace kitbay::catalog
