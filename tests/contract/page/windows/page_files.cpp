#include "contract/page/windows/page_files.h"

#include <windows.h>

#include <fstream>
#include <stdexcept>

namespace kitbay::contract {

PageFiles::PageFiles() {
  const std::string name = "kitbay pages " + std::to_string(GetCurrentProcessId()) + " ";
  int number = 0;
  do {
    folder_ = std::filesystem::temp_directory_path() / (name + std::to_string(++number));
  } while (!std::filesystem::create_directory(folder_));
}

PageFiles::~PageFiles() {
  std::error_code ignored;  // the control may still read a page
  std::filesystem::remove_all(folder_, ignored);
}

std::string PageFiles::Write(const std::string& markup) {
  return WriteAs("page" + std::to_string(++count_) + ".html", markup);
}

std::string PageFiles::WriteAs(const std::string& name, const std::string& content) {
  const std::filesystem::path path = folder_ / name;
  std::ofstream file(path, std::ios::binary);
  file << content;
  file.close();
  if (!file) {
    throw std::runtime_error("cannot write " + path.string());
  }
  return path.string();
}

}  // namespace kitbay::contract
