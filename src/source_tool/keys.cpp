#include "source_tool/keys.h"

#include <sodium.h>

#include <filesystem>
#include <system_error>

#include "base/failure.h"

namespace kitbay::source_tool {
namespace {

using base::Failure;
using base::RuntimeError;

}  // namespace

catalog::SecretKey MakeSecretKey() {
  if (sodium_init() < 0) {
    throw Failure(RuntimeError::kInvalidProcedureCall, "the system provides no random numbers");
  }
  catalog::PublicKey public_key{};
  catalog::SecretKey secret_key{};
  crypto_sign_keypair(public_key.data(), secret_key.data());
  return secret_key;
}

catalog::PublicKey PublicKeyOf(const catalog::SecretKey& key) {
  catalog::PublicKey public_key{};
  crypto_sign_ed25519_sk_to_pk(public_key.data(), key.data());
  return public_key;
}

void WriteKeyFile(platform::Files& files, const std::string& path, const catalog::SecretKey& key) {
  std::string text(key.size() * 2 + 1, '\0');
  sodium_bin2hex(text.data(), text.size(), key.data(), key.size());
  text.back() = '\n';
  // Nobody else may read it, from the first byte on.
  const std::filesystem::path place(std::u8string(path.begin(), path.end()));
  files.Replace(path, "");
  std::error_code error;
  std::filesystem::permissions(
      place, std::filesystem::perms::owner_read | std::filesystem::perms::owner_write, error);
  if (error) {
    throw Failure(RuntimeError::kPermissionDenied, path);
  }
  files.Create(path, text);
}

catalog::SecretKey ReadKeyFile(const platform::Files& files, const std::string& path) {
  const std::string text = files.Read(path);
  catalog::SecretKey key{};
  std::size_t length = 0;
  if (sodium_hex2bin(key.data(), key.size(), text.data(), text.size(), "\r\n", &length, nullptr) !=
          0 ||
      length != key.size()) {
    throw Failure(RuntimeError::kTypeMismatch, path + " contains no key");
  }
  return key;
}

}  // namespace kitbay::source_tool
