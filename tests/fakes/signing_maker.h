#pragma once

#include <sodium.h>

#include <chrono>
#include <string>
#include <string_view>

#include "catalog/manifest_signature.h"

namespace kitbay::fakes {

/// Whoever makes and signs the manifests of a source; each number is another one, with a key that
/// is always the same.
class SigningMaker {
 public:
  explicit SigningMaker(unsigned char number) {
    unsigned char seed[crypto_sign_SEEDBYTES] = {number};
    crypto_sign_seed_keypair(public_key_.data(), secret_key_.data(), seed);
  }

  const catalog::PublicKey& public_key() const { return public_key_; }

  /// As a file of update sources has it.
  std::string key() const { return catalog::KeyDigits(public_key_); }

  std::string Sign(std::string_view manifest, std::uint64_t serial,
                   std::chrono::sys_days until) const {
    return catalog::SignManifest(manifest, secret_key_, serial, until);
  }

 private:
  catalog::PublicKey public_key_{};
  catalog::SecretKey secret_key_{};
};

}  // namespace kitbay::fakes
