#include "catalog/xml_file.h"

#include <sstream>

#include "base/failure.h"

namespace kitbay::catalog {
namespace {

using base::Failure;
using base::RuntimeError;

// HRESULT_FROM_WIN32(ERROR_INVALID_DATA)
constexpr std::int32_t kInvalidData = static_cast<std::int32_t>(0x8007000D);

constexpr unsigned kParseOptions = pugi::parse_default | pugi::parse_comments | pugi::parse_pi |
                                   pugi::parse_declaration | pugi::parse_doctype;

constexpr const char* kWhiteSpace = " \t\r\n";

[[noreturn]] void RaiseInvalid(pugi::xml_document& document, const std::string& path,
                               const std::string& why) {
  document.reset();
  throw Failure(kInvalidData, path + " is not a well-formed document: " + why);
}

// The parser accepts more than one document element, and skips over a document type declaration
// whose entities it does not know; neither belongs in the suite's files.
void CheckShape(pugi::xml_document& document, const std::string& path) {
  int elements = 0;
  for (const pugi::xml_node& node : document.children()) {
    if (node.type() == pugi::node_doctype) {
      RaiseInvalid(document, path, "a document type declaration is not allowed");
    }
    elements += node.type() == pugi::node_element ? 1 : 0;
  }
  if (elements != 1) {
    RaiseInvalid(document, path, "exactly one document element is allowed");
  }
}

void AppendText(const pugi::xml_node& node, std::string& text) {
  if (node.type() == pugi::node_pcdata || node.type() == pugi::node_cdata) {
    text += node.value();
  }
  for (const pugi::xml_node& child : node.children()) {
    AppendText(child, text);
  }
}

}  // namespace

void LoadXml(const platform::Files& files, const std::string& path, pugi::xml_document& document) {
  document.reset();
  const std::string bytes = files.Read(path);
  const pugi::xml_parse_result result =
      document.load_buffer(bytes.data(), bytes.size(), kParseOptions);
  if (!result) {
    RaiseInvalid(document, path,
                 std::string(result.description()) + " at byte " + std::to_string(result.offset));
  }
  CheckShape(document, path);
}

bool TryLoadXml(const platform::Files& files, const std::string& path,
                pugi::xml_document& document) {
  try {
    LoadXml(files, path, document);
    return true;
  } catch (const Failure&) {
    return false;
  }
}

void SaveXml(platform::Files& files, const std::string& path, const pugi::xml_document& document) {
  std::ostringstream text;
  document.save(text, "", pugi::format_raw | pugi::format_no_declaration, pugi::encoding_utf8);
  files.Replace(path, text.str());
}

std::string ElementText(const pugi::xml_node& node) {
  if (!node) {
    throw Failure(RuntimeError::kObjectVariableNotSet);
  }
  std::string text;
  AppendText(node, text);
  const auto first = text.find_first_not_of(kWhiteSpace);
  if (first == std::string::npos) {
    return {};
  }
  return text.substr(first, text.find_last_not_of(kWhiteSpace) - first + 1);
}

std::string ChildText(const pugi::xml_node& entry, const char* name) {
  return ElementText(entry.child(name));
}

std::string AttributeText(const pugi::xml_node& entry, const char* name) {
  const pugi::xml_attribute attribute = entry.attribute(name);
  if (!attribute) {
    throw Failure(RuntimeError::kObjectVariableNotSet);
  }
  return attribute.value();
}

std::string FirstAttributeText(const pugi::xml_node& entry) {
  const pugi::xml_attribute attribute = entry.first_attribute();
  if (!attribute) {
    throw Failure(RuntimeError::kObjectVariableNotSet);
  }
  return attribute.value();
}

pugi::xpath_node_set SelectNodes(const pugi::xml_document& document, const char* path) {
  pugi::xpath_node_set nodes = document.select_nodes(path);
  nodes.sort();
  return nodes;
}

}  // namespace kitbay::catalog
