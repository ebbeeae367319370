#pragma once

#include <string>

#include "catalog/manifest_signature.h"
#include "platform/files.h"

namespace kitbay::source_tool {

/// A new secret key from the system's random numbers.
catalog::SecretKey MakeSecretKey();

catalog::PublicKey PublicKeyOf(const catalog::SecretKey& key);

/// Stores the key in a file of 128 hexadecimal digits which, if the system supports that, only its
/// owner may read. Throws `base::Failure` if it cannot be written.
void WriteKeyFile(platform::Files& files, const std::string& path, const catalog::SecretKey& key);

/// Throws `base::Failure` if the file is missing or contains no key.
catalog::SecretKey ReadKeyFile(const platform::Files& files, const std::string& path);

}  // namespace kitbay::source_tool
