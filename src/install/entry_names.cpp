#include "install/entry_names.h"

#include <algorithm>
#include <utility>

#include "base/failure.h"
#include "base/file_name.h"
#include "base/text.h"

namespace kitbay::install {
namespace {

[[noreturn]] void Refuse(const std::string& name) {
  throw base::Failure(base::RuntimeError::kPathFileAccessError, Printable(name));
}

bool IsControl(char letter) {
  const auto byte = static_cast<unsigned char>(letter);
  return byte < 0x20 || byte == 0x7F;
}

}  // namespace

EntryNames::EntryNames(const platform::Files& files, std::string destination)
    : files_(files), destination_(std::move(destination)) {}

void EntryNames::DemandPlain(const std::string& name, bool is_folder) {
  if (!base::IsUtf8(name)) {
    Refuse(name);
  }
  const std::size_t end = is_folder && name.ends_with('\\') ? name.size() - 1 : name.size();
  for (std::size_t start = 0; start <= end;) {
    const std::size_t separator = std::min(name.find('\\', start), end);
    if (!base::IsPlainFileName(name.substr(start, separator - start))) {
      Refuse(name);
    }
    start = separator + 1;
  }
}

void EntryNames::DemandNoLink(const std::string& name) {
  std::size_t separator = name.find('\\');
  for (; separator != std::string::npos; separator = name.find('\\', separator + 1)) {
    const std::string folder = name.substr(0, separator);
    auto known = found_.find(folder);
    if (known == found_.end()) {
      known = found_.emplace(folder, Look(folder)).first;
    }
    if (known->second == Found::kLink) {
      Refuse(name);
    }
    // Nothing can be below what does not exist.
    if (known->second == Found::kNothing) {
      return;
    }
  }
  if (files_.IsLink(destination_ + name)) {
    Refuse(name);
  }
}

EntryNames::Found EntryNames::Look(const std::string& path) {
  if (files_.IsLink(destination_ + path)) {
    return Found::kLink;
  }
  return files_.Exists(destination_ + path) ? Found::kPlain : Found::kNothing;
}

std::string Printable(const std::string& name) {
  std::string printable = name;
  const bool is_text = base::IsUtf8(name);
  std::replace_if(
      printable.begin(), printable.end(),
      [&](char letter) {
        return IsControl(letter) || (!is_text && static_cast<unsigned char>(letter) >= 0x80);
      },
      '?');
  return printable;
}

}  // namespace kitbay::install
