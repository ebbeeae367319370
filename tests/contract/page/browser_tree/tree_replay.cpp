#include <sstream>
#include <stdexcept>

#include "contract/page/browser_tree/tree_cases.h"
#include "fakes/fake_html_document.h"

namespace kitbay::contract {
namespace {

using fakes::FakeHtmlDocument;
using platform::HtmlNode;
using platform::HtmlNodeRef;

HtmlNodeRef RowAt(FakeHtmlDocument& document, const Step& step) {
  return document.AllItem(step.at(1))->ChildNode(std::stoi(step.at(2)));
}

HtmlNodeRef ButtonCell(const HtmlNode& row) { return row.ChildNode(1)->ChildNode(0)->ChildNode(1); }

void Apply(FakeHtmlDocument& document, const Step& step) {
  const std::string& kind = step.at(0);
  if (kind == "row") {
    const auto row = document.CreateElement(step.at(2));
    row->InsertAdjacentHtml("afterBegin", step.at(3));
    row->InsertAdjacentHtml("beforeEnd", step.at(4));
    document.AllItem(step.at(1))->AppendChild(row);
  } else if (kind == "html") {
    document.AllItem(step.at(1))->SetInnerHtml(step.at(2));
  } else if (kind == "style") {
    document.AllItem(step.at(1))->SetStyle(step.at(2), step.at(3));
  } else if (kind == "modify") {
    const auto row = RowAt(document, step);
    row->ChildNode(0)->ChildNode(1)->SetInnerText("");
    row->ChildNode(0)->ChildNode(1)->SetInnerText("Version " + step.at(3));
    ButtonCell(*row)->SetInnerHtml("");
    ButtonCell(*row)->SetInnerHtml(step.at(4));
  } else if (kind == "remove") {
    RowAt(document, step)->RemoveNode(true);
  } else if (kind == "disable") {
    ButtonCell(*RowAt(document, step))->ChildNode(0)->SetDisabled(true);
  } else {
    throw std::invalid_argument("no such step: " + kind);
  }
}

void CollectNameLines(const HtmlNode& node, std::vector<std::string>& texts) {
  if (node.TagName() == "SPAN" && !node.Id().empty() && node.Id() == node.ParentElement()->Id()) {
    texts.push_back(node.InnerText());
  }
  for (int i = 0; i < node.ChildCount(); ++i) {
    CollectNameLines(*node.Child(i), texts);
  }
}

std::string Json(const std::string& text) {
  std::string result = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') {
      result += std::string("\\") + c;
    } else if (c == '\n') {
      result += "\\n";
    } else if (c == '\r') {
      result += "\\r";
    } else if (c == '\t') {
      result += "\\t";
    } else {
      result += c;
    }
  }
  return result + "\"";
}

std::string JsonList(const std::vector<std::string>& texts, const std::string& separator) {
  std::string result = "[";
  for (std::size_t i = 0; i < texts.size(); ++i) {
    result += (i == 0 ? "" : ",") + separator + Json(texts[i]);
  }
  return result + "]";
}

}  // namespace

TreeResult Replay(const TreeCase& tree_case) {
  FakeHtmlDocument document("<html><head></head><body>" + BodyOfCases() + "</body></html>");
  for (const Step& step : tree_case.steps) {
    Apply(document, step);
  }
  TreeResult result;
  std::istringstream lines(document.TreeText());
  for (std::string line; std::getline(lines, line);) {
    result.tree.push_back(line);
  }
  CollectNameLines(*document.Body(), result.texts);
  return result;
}

std::string TreeCasesAsJson() {
  std::string json = "{\n\"body\": " + Json(BodyOfCases()) + ",\n\"cases\": [";
  bool first = true;
  for (const TreeCase& tree_case : TreeCases()) {
    const TreeResult result = Replay(tree_case);
    json += std::string(first ? "" : ",") + "\n{\n \"name\": " + Json(tree_case.name) +
            ",\n \"steps\": [";
    for (std::size_t i = 0; i < tree_case.steps.size(); ++i) {
      json += (i == 0 ? "\n  " : ",\n  ") + JsonList(tree_case.steps[i], " ");
    }
    json += "],\n \"texts\": " + JsonList(result.texts, " ") +
            ",\n \"tree\": " + JsonList(result.tree, "\n  ") + "\n}";
    first = false;
  }
  return json + "\n]\n}\n";
}

}  // namespace kitbay::contract
