#include "fakes/fake_html_text.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "fakes/fake_style.h"

namespace kitbay::fakes {
namespace {

constexpr std::string_view kNoBreakSpace = "\xC2\xA0";

constexpr std::array<std::string_view, 14> kWithoutEnd = {
    "area",  "base", "br",   "col",   "embed",  "hr",    "img",
    "input", "link", "meta", "param", "source", "track", "wbr"};
constexpr std::array<std::string_view, 6> kRawText = {"style",  "script",   "xmp",
                                                      "iframe", "noframes", "plaintext"};
constexpr std::array<std::string_view, 13> kBlocks = {"div", "p",  "ul", "ol", "li",  "table", "tr",
                                                      "h1",  "h2", "h3", "hr", "pre", "center"};
constexpr std::array<std::string_view, 5> kNeverShown = {"script", "style", "head", "title",
                                                         "iframe"};

template <typename Range>
bool IsOneOf(const Range& range, std::string_view text) {
  return std::find(range.begin(), range.end(), text) != range.end();
}

std::string Escaped(std::string_view text, bool in_attribute) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '&') {
      result += "&amp;";
    } else if (text[i] == '<') {
      result += "&lt;";
    } else if (text[i] == '>') {
      result += "&gt;";
    } else if (text[i] == '"' && in_attribute) {
      result += "&quot;";
    } else if (text.substr(i).starts_with(kNoBreakSpace)) {
      result += "&nbsp;";
      ++i;
    } else {
      result += text[i];
    }
  }
  return result;
}

void AppendMarkup(const DomNode& node, std::string& out) {
  if (node.kind == NodeKind::kText) {
    const bool raw = node.parent() != nullptr && IsOneOf(kRawText, node.parent()->tag);
    out += raw ? node.text : Escaped(node.text, false);
    return;
  }
  if (node.kind == NodeKind::kComment) {
    out += "<!--" + node.text + "-->";
    return;
  }
  out += "<" + node.tag;
  for (const Attribute& attribute : node.attributes) {
    out += " " + attribute.name + "=\"" + Escaped(attribute.value, true) + "\"";
  }
  out += ">";
  if (IsOneOf(kWithoutEnd, node.tag)) return;
  for (const DomNode* child : node.all_children()) AppendMarkup(*child, out);
  out += "</" + node.tag + ">";
}

bool HidesItself(const DomNode& node) {
  return node.kind == NodeKind::kElement &&
         (IsOneOf(kNeverShown, node.tag) ||
          FakeStyle(node.GetAttribute("style").value_or("")).Get("display") == "none");
}

void AppendAllText(const DomNode& node, std::string& out) {
  if (node.kind == NodeKind::kText) out += node.text;
  for (const DomNode* child : node.all_children()) AppendAllText(*child, out);
}

void StartLine(std::string& out) {
  while (out.ends_with(' ')) out.pop_back();
  if (!out.empty() && out.back() != '\n') out += '\n';
}

void AppendCollapsed(std::string_view text, std::string& out) {
  for (const char c : text) {
    if (!IsWhiteSpace(std::string_view(&c, 1))) {
      out += c;
    } else if (!out.empty() && out.back() != ' ' && out.back() != '\n') {
      out += ' ';
    }
  }
}

void AppendVisibleText(const DomNode& node, std::string& out) {
  if (node.kind == NodeKind::kText) {
    AppendCollapsed(node.text, out);
    return;
  }
  if (node.kind != NodeKind::kElement || HidesItself(node)) return;
  if (node.tag == "br") {
    out += '\n';
    return;
  }
  const bool block = IsOneOf(kBlocks, node.tag);
  if (block) StartLine(out);
  for (const DomNode* child : node.all_children()) AppendVisibleText(*child, out);
  if (block) StartLine(out);
}

std::string Quoted(std::string_view text) {
  std::string result = "\"";
  for (const char c : text) {
    if (c == '\n') {
      result += "\\n";
    } else {
      if (c == '"' || c == '\\') result += '\\';
      result += c;
    }
  }
  return result + "\"";
}

void AppendTree(const DomNode& node, std::size_t depth, std::string& out) {
  out += std::string(2 * depth, ' ');
  if (node.kind == NodeKind::kText) {
    out += Quoted(node.text) + "\n";
    return;
  }
  if (node.kind == NodeKind::kComment) {
    out += "comment " + Quoted(node.text) + "\n";
    return;
  }
  out += node.tag;
  std::vector<Attribute> attributes = node.attributes;
  std::sort(attributes.begin(), attributes.end(),
            [](const Attribute& a, const Attribute& b) { return a.name < b.name; });
  for (const Attribute& attribute : attributes) {
    const bool style = attribute.name == "style";
    out += " " + attribute.name + "=" +
           Quoted(style ? FakeStyle(attribute.value).Text() : attribute.value);
  }
  out += "\n";
  for (const DomNode* child : node.child_nodes()) AppendTree(*child, depth + 1, out);
}

}  // namespace

std::string InnerMarkup(const DomNode& node) {
  std::string out;
  for (const DomNode* child : node.all_children()) AppendMarkup(*child, out);
  return out;
}

std::string OuterMarkup(const DomNode& node) {
  std::string out;
  AppendMarkup(node, out);
  return out;
}

std::string VisibleText(const DomTree& tree, const DomNode& node) {
  bool shown = tree.OnPage(node);
  for (const DomNode* at = &node; at != nullptr; at = at->parent()) {
    shown = shown && !HidesItself(*at);
  }
  std::string out;
  if (!shown) {
    AppendAllText(node, out);
    return out;
  }
  for (const DomNode* child : node.all_children()) AppendVisibleText(*child, out);
  while (out.ends_with(' ') || out.ends_with('\n')) out.pop_back();
  return out;
}

std::string TreeText(const DomNode& node) {
  std::string out;
  AppendTree(node, 0, out);
  return out;
}

}  // namespace kitbay::fakes
