#include "catalog/xml_file.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "base/failure.h"
#include "base/text.h"

namespace kitbay::catalog {
namespace {

using base::Failure;
using base::RuntimeError;

// HRESULT_FROM_WIN32(ERROR_INVALID_DATA)
constexpr std::int32_t kInvalidData = static_cast<std::int32_t>(0x8007000D);

// Parsed as a fragment, so that text outside the document element is noticed.
constexpr unsigned kWellFormed = pugi::parse_default | pugi::parse_doctype | pugi::parse_fragment;

// Most elements contain a single text; storing it in the element itself halves the tree.
constexpr unsigned kToRead = kWellFormed | pugi::parse_embed_pcdata;

// Everything else that a file may contain, with line ends unchanged.
constexpr unsigned kToChange = (kWellFormed & ~pugi::parse_eol) | pugi::parse_comments |
                               pugi::parse_pi | pugi::parse_declaration | pugi::parse_ws_pcdata;

// Collects a document's text as it is saved, which is about as long as before.
class TextSink : public pugi::xml_writer {
 public:
  explicit TextSink(std::size_t bytes_before) {
    constexpr std::size_t kRoomForMore = 4096;
    text_.reserve(bytes_before + kRoomForMore);
  }
  void write(const void* data, std::size_t size) override {
    text_.append(static_cast<const char*>(data), size);
  }
  std::string TakeText() { return std::move(text_); }

 private:
  std::string text_;
};

bool IsText(const pugi::xml_node& node) {
  return node.type() == pugi::node_pcdata || node.type() == pugi::node_cdata;
}

pugi::xml_node ElementFrom(pugi::xml_node node) {
  while (node && node.type() != pugi::node_element) {
    node = node.next_sibling();
  }
  return node;
}

// The node after `node` in document order below `top`; none after the last. Not recursive, because
// a file may nest as deep as it is long.
pugi::xml_node NextBelow(const pugi::xml_node& top, pugi::xml_node node) {
  if (const pugi::xml_node child = node.first_child()) {
    return child;
  }
  while (node != top) {
    if (const pugi::xml_node next = node.next_sibling()) {
      return next;
    }
    node = node.parent();
  }
  return {};
}

bool IsWhiteSpace(char letter) {
  return letter == ' ' || letter == '\t' || letter == '\r' || letter == '\n';
}

bool IsWhiteSpace(const pugi::xml_node& text) {
  return text.type() == pugi::node_pcdata && Trimmed(text.value()).empty();
}

[[noreturn]] void RaiseInvalid(pugi::xml_document& document, const std::string& path,
                               const std::string& why) {
  document.reset();
  throw Failure(kInvalidData, path + " is not a well-formed document: " + why);
}

// The parser does not expand the entities of a document type declaration; the suite's files have
// none.
void CheckShape(pugi::xml_document& document, const std::string& path) {
  int elements = 0;
  for (const pugi::xml_node& node : document.children()) {
    if (node.type() == pugi::node_doctype) {
      RaiseInvalid(document, path, "a document type declaration is not allowed");
    }
    if (IsText(node) && !IsWhiteSpace(node)) {
      RaiseInvalid(document, path, "text outside of the document element is not allowed");
    }
    elements += node.type() == pugi::node_element ? 1 : 0;
  }
  if (elements != 1) {
    RaiseInvalid(document, path, "exactly one document element is allowed");
  }
}

pugi::xml_encoding Parse(std::string bytes, const std::string& path, unsigned options,
                         XmlDocument& document) {
  const pugi::xml_parse_result result = document.ParseInPlace(std::move(bytes), options);
  if (!result) {
    RaiseInvalid(document, path,
                 std::string(result.description()) + " at byte " + std::to_string(result.offset));
  }
  CheckShape(document, path);
  return result.encoding;
}

// The attribute in which the file declares its encoding; empty if it does not.
pugi::xml_attribute DeclaredEncoding(const pugi::xml_document& document) {
  const pugi::xml_node first = document.first_child();
  return first.type() == pugi::node_declaration ? first.attribute("encoding")
                                                : pugi::xml_attribute();
}

bool IsUtf8Name(const char* encoding) { return base::ToLower(encoding) == "utf-8"; }

template <typename Loading>
bool Succeeds(Loading loading) {
  try {
    loading();
    return true;
  } catch (const Failure&) {
    return false;
  }
}

}  // namespace

void ParseXml(std::string bytes, const std::string& path, XmlDocument& document) {
  document.reset();
  Parse(std::move(bytes), path, kToRead, document);
}

void LoadXml(const platform::Files& files, const std::string& path, XmlDocument& document) {
  document.reset();
  ParseXml(files.Read(path), path, document);
}

// In memory, and so also when it is saved, the document is UTF-8. Of the other encodings the parser
// converts UTF-16, UTF-32 and Latin-1; bytes in any other would stay unchanged beside those that
// are added.
void ParseXmlToChange(std::string bytes, const std::string& path, XmlDocument& document) {
  document.reset();
  const bool is_utf8 = base::IsUtf8(bytes);
  const bool is_converted =
      Parse(std::move(bytes), path, kToChange, document) != pugi::encoding_utf8;
  pugi::xml_attribute declared = DeclaredEncoding(document);
  if (!declared || IsUtf8Name(declared.value())) {
    return;
  }
  if (!is_converted && !is_utf8) {
    const std::string encoding = declared.value();
    document.reset();
    throw Failure(kInvalidData, path + " cannot be changed in its encoding, " + encoding);
  }
  declared.set_value("UTF-8");
}

void LoadXmlToChange(const platform::Files& files, const std::string& path, XmlDocument& document) {
  document.reset();
  ParseXmlToChange(files.Read(path), path, document);
}

bool TryLoadXml(const platform::Files& files, const std::string& path, XmlDocument& document) {
  return Succeeds([&] { LoadXml(files, path, document); });
}

std::string XmlBytes(const XmlDocument& document) {
  TextSink sink(document.byte_count());
  document.save(sink, "", pugi::format_raw | pugi::format_no_declaration, pugi::encoding_utf8);
  return sink.TakeText();
}

void SaveXml(platform::Files& files, const std::string& path, const XmlDocument& document) {
  files.Replace(path, XmlBytes(document));
}

pugi::xml_node FirstElement(const pugi::xml_node& parent) {
  return ElementFrom(parent.first_child());
}

pugi::xml_node NextElement(const pugi::xml_node& node) { return ElementFrom(node.next_sibling()); }

std::string_view Trimmed(std::string_view text) {
  while (!text.empty() && IsWhiteSpace(text.back())) {
    text.remove_suffix(1);
  }
  while (!text.empty() && IsWhiteSpace(text.front())) {
    text.remove_prefix(1);
  }
  return text;
}

std::string ElementText(const pugi::xml_node& node) {
  if (!node) {
    throw Failure(RuntimeError::kObjectVariableNotSet);
  }
  // An element's own value is its first text, and usually all of its text.
  if (!node.first_child()) {
    return std::string(Trimmed(node.value()));
  }
  std::string text = node.value();
  for (pugi::xml_node at = NextBelow(node, node); at; at = NextBelow(node, at)) {
    if (IsText(at) || at.type() == pugi::node_element) {
      text += at.value();
    }
  }
  return std::string(Trimmed(text));
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
