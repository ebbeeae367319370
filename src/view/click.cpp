#include "view/click.h"

#include <cstddef>
#include <utility>

#include "base/failure.h"
#include "base/text.h"
#include "view/page_document.h"
#include "view/page_ids.h"
#include "view/row_nodes.h"

namespace kitbay::view {
namespace {

using base::ComponentKind;
using platform::HtmlNodeRef;

// What the button does, and to which kind of component.
struct Target {
  ComponentKind kind;
  ClickAction action;
};

// The button's value decides only in a list of installed components.
std::optional<Target> TargetOf(const std::string& container, const HtmlNodeRef& button) {
  for (const ComponentKind kind : base::kComponentKinds) {
    if (container == kUpdatedContainers[kind]) {
      return Target{.kind = kind, .action = ClickAction::kInstall};
    }
    if (container == kInstalledContainers[kind]) {
      const bool is_update = base::ToLower(button->Value()) == "update";
      return Target{.kind = kind,
                    .action = is_update ? ClickAction::kUpdate : ClickAction::kRemove};
    }
  }
  return std::nullopt;
}

}  // namespace

std::string Click::Name() const {
  const std::size_t version = name_line.find("Version");
  if (version == std::string::npos) {
    throw base::Failure(base::RuntimeError::kInvalidProcedureCall);
  }
  return name_line.substr(0, version);
}

std::optional<Click> ReadClick(const HtmlNodeRef& element) {
  const HtmlNodeRef row = RowOfButton(element);
  const HtmlNodeRef container = ParentOf(row);
  if (!container || base::ToLower(element->TagName()) != "input") {
    return std::nullopt;
  }
  const std::optional<Target> target = TargetOf(container->Id(), element);
  if (!target) {
    return std::nullopt;
  }
  constexpr std::size_t kPanelPrefix = 3;
  return Click{.kind = target->kind,
               .action = target->action,
               .button = element,
               .row_id = PanelOf(row)->Id().substr(kPanelPrefix),
               .row_name = NameMarkup(row),
               .name_line = Needed(NameLineOf(row))->InnerText()};
}

}  // namespace kitbay::view
