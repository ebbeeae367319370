#include "fakes/fake_html_text.h"

#include <array>
#include <string_view>

#include "fakes/fake_style.h"
#include "fakes/is_one_of.h"

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
constexpr std::array<std::string_view, 2> kCells = {"td", "th"};
constexpr std::array<std::string_view, 6> kNeverShown = {"script", "style",  "head",
                                                         "title",  "iframe", "textarea"};

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
  if (IsOneOf(kWithoutEnd, node.tag)) {
    return;
  }
  for (const DomNode* child : node.all_children()) {
    AppendMarkup(*child, out);
  }
  out += "</" + node.tag + ">";
}

bool HidesItself(const DomNode& node) {
  return node.kind == NodeKind::kElement &&
         (IsOneOf(kNeverShown, node.tag) ||
          FakeStyle(node.GetAttribute("style").value_or("")).Get("display") == "none");
}

void AppendAllText(const DomNode& node, std::string& out) {
  if (node.kind == NodeKind::kText) {
    out += node.text;
  }
  for (const DomNode* child : node.all_children()) {
    AppendAllText(*child, out);
  }
}

/// Text in lines: white space is collapsed, and line ends appear only between texts.
class TextLines {
 public:
  /// Puts at least this many line ends before the next text.
  void BreakLine(std::size_t line_ends) { line_ends_ = std::max(line_ends_, line_ends); }

  void Add(std::string_view text) {
    for (const char c : text) {
      if (IsWhiteSpace(std::string_view(&c, 1))) {
        blank_ = true;
      } else {
        StartText();
        text_ += c;
      }
    }
  }

  /// Adds a line end or a tab that does not collapse with anything.
  void AddControl(char control) {
    blank_ = false;
    StartText();
    text_ += control;
  }

  std::string text() const { return text_; }

 private:
  void StartText() {
    if (line_ends_ > 0 && !text_.empty()) {
      text_.append(line_ends_, '\n');
    } else if (blank_ && !text_.empty() && text_.back() != '\n' && text_.back() != '\t') {
      text_ += ' ';
    }
    line_ends_ = 0;
    blank_ = false;
  }

  std::string text_;
  std::size_t line_ends_ = 0;
  bool blank_ = false;
};

bool IsCellBeforeAnother(const DomNode& node) {
  if (!IsOneOf(kCells, node.tag)) {
    return false;
  }
  const auto& siblings = node.parent()->child_elements();
  return siblings.back() != &node;
}

void AddVisibleText(const DomNode& node, TextLines& lines) {
  if (node.kind == NodeKind::kText) {
    lines.Add(node.text);
    return;
  }
  if (node.kind != NodeKind::kElement || HidesItself(node)) {
    return;
  }
  if (node.tag == "br") {
    lines.AddControl('\n');
    return;
  }
  const std::size_t line_ends = node.tag == "p" ? 2 : IsOneOf(kBlocks, node.tag) ? 1 : 0;
  lines.BreakLine(line_ends);
  for (const DomNode* child : node.all_children()) {
    AddVisibleText(*child, lines);
  }
  lines.BreakLine(line_ends);
  if (IsCellBeforeAnother(node)) {
    lines.AddControl('\t');
  }
}

std::string Quoted(std::string_view text) {
  std::string result = "\"";
  for (const char c : text) {
    if (c == '\n') {
      result += "\\n";
    } else {
      if (c == '"' || c == '\\') {
        result += '\\';
      }
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
  for (const DomNode* child : node.child_nodes()) {
    AppendTree(*child, depth + 1, out);
  }
}

}  // namespace

std::string InnerMarkup(const DomNode& node) {
  std::string out;
  for (const DomNode* child : node.all_children()) {
    AppendMarkup(*child, out);
  }
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
  TextLines lines;
  for (const DomNode* child : node.all_children()) {
    AddVisibleText(*child, lines);
  }
  return lines.text();
}

std::string TreeText(const DomNode& node) {
  std::string out;
  AppendTree(node, 0, out);
  return out;
}

}  // namespace kitbay::fakes
