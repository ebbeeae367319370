#include "catalog/package_digest.h"

#include <sodium.h>

#include <array>
#include <charconv>
#include <string_view>
#include <system_error>
#include <vector>

#include "base/failure.h"
#include "base/text.h"
#include "catalog/xml_file.h"

namespace kitbay::catalog {
namespace {

constexpr std::size_t kPiece = 65536;

// NTE_BAD_HASH
constexpr auto kBadHash = static_cast<std::int32_t>(0x80090002);

std::string TextOf(const pugi::xml_node& entry, const char* name) {
  const pugi::xml_node child = entry.child(name);
  return child ? ElementText(child) : "";
}

[[noreturn]] void Refuse(const PackageDigest& digest, const std::string& why) {
  throw base::Failure(kBadHash, digest.manifest + why);
}

}  // namespace

PackageDigest ReadDigest(const std::string& manifest, const pugi::xml_node& entry) {
  return {.manifest = manifest,
          .size = TextOf(entry, "size"),
          .sha256 = base::ToLower(TextOf(entry, "sha256"))};
}

std::optional<std::uint64_t> SizeIn(const PackageDigest& digest) {
  std::uint64_t size = 0;
  const char* const end = digest.size.data() + digest.size.size();
  const auto [stop, error] = std::from_chars(digest.size.data(), end, size);
  return error == std::errc() && stop == end ? std::optional(size) : std::nullopt;
}

std::string Sha256Of(const platform::FileReader& file) {
  crypto_hash_sha256_state state;
  crypto_hash_sha256_init(&state);
  std::vector<char> piece(kPiece);
  std::uint64_t place = 0;
  while (const std::size_t length = file.ReadAt(place, piece.data(), piece.size())) {
    crypto_hash_sha256_update(&state, reinterpret_cast<const unsigned char*>(piece.data()), length);
    place += length;
  }
  std::array<unsigned char, crypto_hash_sha256_BYTES> hash{};
  crypto_hash_sha256_final(&state, hash.data());
  std::string text(hash.size() * 2 + 1, '\0');
  sodium_bin2hex(text.data(), text.size(), hash.data(), hash.size());
  text.pop_back();
  return text;
}

void CheckDigest(const platform::FileReader& package, const PackageDigest& digest) {
  if (digest.size.empty() || digest.sha256.empty()) {
    Refuse(digest, " does not say the size and the SHA-256 of the package");
  }
  const std::string size = std::to_string(package.Size());
  if (size != digest.size) {
    Refuse(digest, " announces " + digest.size + " bytes, and the package has " + size);
  }
  if (Sha256Of(package) != digest.sha256) {
    Refuse(digest, " announces a package of another SHA-256");
  }
}

}  // namespace kitbay::catalog
