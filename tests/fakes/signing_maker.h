#pragma once

#include <sodium.h>

#include <chrono>
#include <string>
#include <string_view>
#include <utility>

#include "catalog/manifest_signature.h"

namespace kitbay::fakes {

/// The maker of a source's manifest `file`, who signs it. Each number is a different maker, whose
/// key is always the same.
class SigningMaker {
 public:
  explicit SigningMaker(unsigned char number, std::string file = "list.xml")
      : file_(std::move(file)) {
    unsigned char seed[crypto_sign_SEEDBYTES] = {number};
    crypto_sign_seed_keypair(public_key_.data(), secret_key_.data(), seed);
  }

  const catalog::PublicKey& public_key() const { return public_key_; }

  /// The key as in a file of update sources.
  std::string key() const { return catalog::KeyDigits(public_key_); }

  std::string Sign(std::string_view manifest, std::uint64_t serial,
                   std::chrono::sys_days until) const {
    return catalog::SignManifest(manifest, file_, secret_key_, serial, until);
  }

 private:
  std::string file_;
  catalog::PublicKey public_key_{};
  catalog::SecretKey secret_key_{};
};

}  // namespace kitbay::fakes
