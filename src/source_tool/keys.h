#pragma once

#include <string>

#include "catalog/manifest_signature.h"
#include "platform/files.h"

namespace kitbay::source_tool {

/// A new secret key, of the system's own random numbers.
catalog::SecretKey MakeSecretKey();

catalog::PublicKey PublicKeyOf(const catalog::SecretKey& key);

/// Keeps the key in a file of 128 hexadecimal digits that, where the system can say so, only its
/// owner may read. Throws `base::Failure` where that cannot be written.
void WriteKeyFile(platform::Files& files, const std::string& path, const catalog::SecretKey& key);

/// Throws `base::Failure` where the file is missing or holds no key.
catalog::SecretKey ReadKeyFile(const platform::Files& files, const std::string& path);

}  // namespace kitbay::source_tool
