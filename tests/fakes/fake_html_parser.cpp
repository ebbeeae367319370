#include "fakes/fake_html_parser.h"

#include <gumbo.h>

#include <memory>

#include "base/text.h"

namespace kitbay::fakes {
namespace {

struct DestroyOutput {
  void operator()(GumboOutput* output) const {
    gumbo_destroy_output(&kGumboDefaultOptions, output);
  }
};
using Output = std::unique_ptr<GumboOutput, DestroyOutput>;

Output Parse(std::string_view markup, GumboTag context) {
  GumboOptions options = kGumboDefaultOptions;
  options.fragment_context = context;
  options.max_errors = 0;
  return Output(gumbo_parse_with_options(&options, markup.data(), markup.size()));
}

/// Elements whose content is not parsed like a page's body.
bool HasOwnParsingRules(GumboTag tag) {
  switch (tag) {
    case GUMBO_TAG_TITLE:
    case GUMBO_TAG_TEXTAREA:
    case GUMBO_TAG_STYLE:
    case GUMBO_TAG_XMP:
    case GUMBO_TAG_IFRAME:
    case GUMBO_TAG_NOEMBED:
    case GUMBO_TAG_NOFRAMES:
    case GUMBO_TAG_SCRIPT:
    case GUMBO_TAG_NOSCRIPT:
    case GUMBO_TAG_PLAINTEXT:
    case GUMBO_TAG_TEMPLATE:
    case GUMBO_TAG_SELECT:
    case GUMBO_TAG_TABLE:
    case GUMBO_TAG_TBODY:
    case GUMBO_TAG_THEAD:
    case GUMBO_TAG_TFOOT:
    case GUMBO_TAG_TR:
    case GUMBO_TAG_TD:
    case GUMBO_TAG_TH:
    case GUMBO_TAG_CAPTION:
    case GUMBO_TAG_COLGROUP:
    case GUMBO_TAG_FRAMESET:
    case GUMBO_TAG_HEAD:
    case GUMBO_TAG_HTML:
      return true;
    default:
      return false;
  }
}

std::string TagOf(const GumboElement& element) {
  if (element.tag != GUMBO_TAG_UNKNOWN && element.tag_namespace == GUMBO_NAMESPACE_HTML) {
    return gumbo_normalized_tagname(element.tag);
  }
  GumboStringPiece name = element.original_tag;
  gumbo_tag_from_original_text(&name);
  if (element.tag_namespace == GUMBO_NAMESPACE_SVG) {
    if (const char* normalized = gumbo_normalize_svg_tagname(&name)) {
      return normalized;
    }
  }
  return base::ToLower(std::string_view(name.data, name.length));
}

template <typename T>
std::vector<T*> Items(const GumboVector& vector) {
  std::vector<T*> items;
  for (unsigned i = 0; i < vector.length; ++i) {
    items.push_back(static_cast<T*>(vector.data[i]));
  }
  return items;
}

DomNode& Convert(DomTree& tree, const GumboNode& node) {
  switch (node.type) {
    case GUMBO_NODE_TEXT:
    case GUMBO_NODE_CDATA:
    case GUMBO_NODE_WHITESPACE:
      return tree.NewText(node.v.text.text);
    case GUMBO_NODE_COMMENT:
      return tree.NewComment(node.v.text.text);
    default:
      break;
  }
  DomNode& element = tree.NewElement(TagOf(node.v.element));
  for (const GumboAttribute* attribute : Items<GumboAttribute>(node.v.element.attributes)) {
    element.attributes.push_back({attribute->name, attribute->value});
  }
  for (const GumboNode* child : Items<GumboNode>(node.v.element.children)) {
    tree.Append(element, Convert(tree, *child));
  }
  return element;
}

std::vector<DomNode*> ConvertAll(DomTree& tree, const GumboVector& nodes) {
  std::vector<DomNode*> converted;
  for (const GumboNode* node : Items<GumboNode>(nodes)) {
    converted.push_back(&Convert(tree, *node));
  }
  return converted;
}

}  // namespace

void ParsePage(DomTree& tree, std::string_view markup) {
  const Output output = Parse(markup, GUMBO_TAG_LAST);
  for (DomNode* node : ConvertAll(tree, output->document->v.document.children)) {
    tree.Append(tree.document(), *node);
  }
}

std::vector<DomNode*> ParseFragment(DomTree& tree, std::string_view context,
                                    std::string_view markup) {
  const GumboTag tag = gumbo_tag_enum(std::string(context).c_str());
  if (HasOwnParsingRules(tag)) {
    const Output output = Parse(markup, tag);
    return ConvertAll(tree, output->root->v.element.children);
  }
  // The parser's fragments are always in standards mode, but a page without doctype is not. In a
  // body, both modes read markup alike.
  const std::string page = "<html><head></head><body>" + std::string(markup);
  const Output output = Parse(page, GUMBO_TAG_LAST);
  for (const GumboNode* child : Items<GumboNode>(output->root->v.element.children)) {
    if (child->type == GUMBO_NODE_ELEMENT && child->v.element.tag == GUMBO_TAG_BODY) {
      return ConvertAll(tree, child->v.element.children);
    }
  }
  return {};
}

}  // namespace kitbay::fakes
