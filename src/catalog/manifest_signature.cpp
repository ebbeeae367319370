#include "catalog/manifest_signature.h"

#include <sodium.h>

#include <algorithm>
#include <charconv>
#include <pugixml.hpp>
#include <span>
#include <system_error>

#include "base/failure.h"
#include "catalog/manifest_file.h"
#include "catalog/xml_file.h"

namespace kitbay::catalog {
namespace {

static_assert(crypto_sign_PUBLICKEYBYTES == std::tuple_size_v<PublicKey>);
static_assert(crypto_sign_SECRETKEYBYTES == std::tuple_size_v<SecretKey>);

constexpr std::string_view kCommentStart = "<!--";
constexpr std::string_view kCommentEnd = "-->";
constexpr std::string_view kElement = "signature";
constexpr std::string_view kValueStart = "ed25519=\"";
// Only this and white space may follow the value; it is the only part that is not signed.
constexpr std::string_view kValueEnd = "\"/>-->";
constexpr std::string_view kBlanks = " \t\r\n";
constexpr std::size_t kIdDigits = 16;

[[noreturn]] void RaiseUnreadable() {
  throw base::Failure(base::RuntimeError::kTypeMismatch, "the signature cannot be read");
}

std::string Hexadecimal(std::span<const unsigned char> bytes) {
  std::string text(bytes.size() * 2 + 1, '\0');
  sodium_bin2hex(text.data(), text.size(), bytes.data(), bytes.size());
  text.pop_back();
  return text;
}

bool ReadHexadecimal(std::string_view text, std::span<unsigned char> bytes) {
  std::size_t length = 0;
  return text.size() == bytes.size() * 2 &&
         sodium_hex2bin(bytes.data(), bytes.size(), text.data(), text.size(), nullptr, &length,
                        nullptr) == 0 &&
         length == bytes.size();
}

// All of `text` as an unsigned number.
template <typename Number>
std::optional<Number> ReadNumber(std::string_view text) {
  Number number{};
  const char* const end = text.data() + text.size();
  // NOLINTNEXTLINE(bugprone-suspicious-stringview-data-usage): its end is passed too
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  return error == std::errc() && stop == end && text.front() != '-' ? std::optional(number)
                                                                    : std::nullopt;
}

// What the comment's only element says. Throws if it is not a signature.
ManifestSignature ReadElement(std::string_view text) {
  pugi::xml_document comment;
  if (!comment.load_buffer(text.data(), text.size())) {
    RaiseUnreadable();
  }
  const pugi::xml_node element = comment.first_child();
  const auto serial = ReadNumber<std::uint64_t>(element.attribute("serial").value());
  const auto until = ReadDate(element.attribute("until").value());
  ManifestSignature signature;
  signature.file = element.attribute("file").value();
  if (element.name() != kElement || element.next_sibling() || signature.file.empty() || !serial ||
      !until || !ReadHexadecimal(element.attribute("ed25519").value(), signature.value)) {
    RaiseUnreadable();
  }
  signature.key_id = element.attribute("key").value();
  signature.serial = *serial;
  signature.until = *until;
  return signature;
}

// A file name as an attribute in a comment, which must not contain two hyphens in a row.
std::string AttributeValue(const std::string& name) {
  std::string text;
  for (const char letter : name) {
    if (letter == '&') {
      text += "&amp;";
    } else if (letter == '-' && text.ends_with('-')) {
      text += "&#45;";
    } else {
      text += letter;
    }
  }
  return text;
}

// Where the comment of a signature begins; npos where the manifest has none.
std::size_t CommentStart(std::string_view manifest) {
  const std::size_t end = manifest.find_last_not_of(kBlanks) + 1;
  if (!manifest.substr(0, end).ends_with(kValueEnd)) {
    return std::string_view::npos;
  }
  const std::size_t comment = manifest.rfind(kCommentStart);
  return comment != std::string_view::npos &&
                 manifest.find("<signature ", comment) != std::string_view::npos
             ? comment
             : std::string_view::npos;
}

}  // namespace

std::optional<ManifestSignature> FindSignature(std::string_view manifest) {
  const std::size_t comment = CommentStart(manifest);
  if (comment == std::string_view::npos) {
    return std::nullopt;
  }
  const std::size_t value = manifest.rfind(kValueStart);
  const std::size_t end = manifest.rfind(kCommentEnd);
  if (value == std::string_view::npos || value < comment) {
    RaiseUnreadable();
  }
  const std::size_t element = comment + kCommentStart.size();
  ManifestSignature signature = ReadElement(manifest.substr(element, end - element));
  signature.signed_bytes = value + kValueStart.size();
  if (signature.signed_bytes + signature.value.size() * 2 + kValueEnd.size() !=
      end + kCommentEnd.size()) {
    RaiseUnreadable();
  }
  return signature;
}

bool IsSignedWith(std::string_view manifest, const ManifestSignature& signature,
                  const PublicKey& key) {
  // The library must be initialised before its first use; later calls of this do nothing.
  return sodium_init() >= 0 &&
         crypto_sign_verify_detached(signature.value.data(),
                                     reinterpret_cast<const unsigned char*>(manifest.data()),
                                     signature.signed_bytes, key.data()) == 0;
}

std::string SignManifest(std::string_view manifest, const std::string& file, const SecretKey& key,
                         std::uint64_t serial, std::chrono::sys_days until) {
  if (!IsManifestName(file)) {
    throw base::Failure(base::RuntimeError::kPathFileAccessError, file);
  }
  PublicKey public_key{};
  crypto_sign_ed25519_sk_to_pk(public_key.data(), key.data());
  const std::size_t comment = FindSignature(manifest) ? CommentStart(manifest) : manifest.size();
  std::string text(manifest.substr(0, comment));
  text.erase(text.find_last_not_of(kBlanks) + 1);
  text += "\n<!--<signature key=\"" + KeyId(public_key) + "\" file=\"" + AttributeValue(file) +
          "\" serial=\"" + std::to_string(serial) + "\" until=\"" + DateText(until) + "\" " +
          std::string(kValueStart);
  ManifestSignature signature;
  crypto_sign_detached(signature.value.data(), nullptr,
                       reinterpret_cast<const unsigned char*>(text.data()), text.size(),
                       key.data());
  return text + Hexadecimal(signature.value) + std::string(kValueEnd) + "\n";
}

std::optional<PublicKey> ReadKey(std::string_view digits) {
  PublicKey key{};
  return ReadHexadecimal(digits, key) ? std::optional(key) : std::nullopt;
}

std::string KeyDigits(const PublicKey& key) { return Hexadecimal(key); }

std::string KeyId(const PublicKey& key) { return KeyDigits(key).substr(0, kIdDigits); }

std::string DateText(std::chrono::sys_days day) {
  const std::chrono::year_month_day date(day);
  const auto digits = [](int number, std::size_t count) {
    const std::string text = std::to_string(number);
    return std::string(count - std::min(count, text.size()), '0') + text;
  };
  return digits(static_cast<int>(date.year()), 4) + "-" +
         digits(static_cast<int>(static_cast<unsigned>(date.month())), 2) + "-" +
         digits(static_cast<int>(static_cast<unsigned>(date.day())), 2);
}

std::optional<std::chrono::sys_days> ReadDate(std::string_view text) {
  constexpr std::size_t kDateLength = 10;
  if (text.size() != kDateLength || text[4] != '-' || text[7] != '-') {
    return std::nullopt;
  }
  const auto year = ReadNumber<int>(text.substr(0, 4));
  const auto month = ReadNumber<unsigned>(text.substr(5, 2));
  const auto day = ReadNumber<unsigned>(text.substr(8));
  if (!year || !month || !day) {
    return std::nullopt;
  }
  const std::chrono::year_month_day date{std::chrono::year(*year), std::chrono::month(*month),
                                         std::chrono::day(*day)};
  return date.ok() ? std::optional(std::chrono::sys_days(date)) : std::nullopt;
}

}  // namespace kitbay::catalog
