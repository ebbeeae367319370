#include "contact_list.h"

#include <span>

namespace {

enum class Presence { kAvailable, kBusy, kAway };

struct Contact {
  const wchar_t* name;
  const wchar_t* status;
  Presence presence;
};

struct Group {
  const wchar_t* title;
  std::span<const Contact> contacts;
};

constexpr Contact kColleagues[] = {
    {L"Maja Lindqvist", L"Available", Presence::kAvailable},
    {L"Tomasz Wójcik", L"On the telephone", Presence::kBusy},
    {L"Agnès Delorme", L"Back at three", Presence::kAway},
};
constexpr Contact kFamily[] = {
    {L"Jörg Ammann", L"Available", Presence::kAvailable},
    {L"Grandma Ines", L"In the garden", Presence::kAway},
};
constexpr Group kGroups[] = {{L"Colleagues", kColleagues}, {L"Family", kFamily}};

constexpr int kGroupHeight = 24;
constexpr int kContactHeight = 22;
constexpr int kMarkSize = 10;

HFONT MakeFont(int weight) {
  return CreateFontW(-12, 0, 0, 0, weight, FALSE, FALSE, FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS,
                     CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, DEFAULT_PITCH, L"Verdana");
}

COLORREF MarkColour(Presence presence) {
  switch (presence) {
    case Presence::kAvailable:
      return RGB(0x2e, 0x9e, 0x41);
    case Presence::kBusy:
      return RGB(0xc8, 0x32, 0x2d);
    case Presence::kAway:
      break;
  }
  return RGB(0xe0, 0xa8, 0x20);
}

void DrawLine(HDC target, const wchar_t* text, COLORREF colour, RECT line, UINT alignment) {
  SetTextColor(target, colour);
  DrawTextW(target, text, -1, &line, alignment | DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS);
}

void PaintContact(HDC target, const Contact& contact, RECT line) {
  const int top = line.top + (kContactHeight - kMarkSize) / 2;
  const HGDIOBJ old_brush = SelectObject(target, GetStockObject(DC_BRUSH));
  const HGDIOBJ old_pen = SelectObject(target, GetStockObject(NULL_PEN));
  SetDCBrushColor(target, MarkColour(contact.presence));
  Ellipse(target, line.left + 14, top, line.left + 14 + kMarkSize, top + kMarkSize);
  SelectObject(target, old_pen);
  SelectObject(target, old_brush);

  line.left += 32;
  line.right -= 8;
  DrawLine(target, contact.name, RGB(0, 0, 0), line, DT_LEFT);
  DrawLine(target, contact.status, RGB(0x70, 0x70, 0x70), line, DT_RIGHT);
}

}  // namespace

ContactList::ContactList() : name_font_(MakeFont(FW_NORMAL)), group_font_(MakeFont(FW_BOLD)) {}

ContactList::~ContactList() {
  DeleteObject(group_font_);
  DeleteObject(name_font_);
}

void ContactList::Paint(HDC target, const RECT& area) const {
  FillRect(target, &area, GetSysColorBrush(COLOR_WINDOW));
  SetBkMode(target, TRANSPARENT);
  const HGDIOBJ old_font = SelectObject(target, name_font_);
  RECT line{area.left, area.top, area.right, area.top};
  for (const Group& group : kGroups) {
    line.bottom = line.top + kGroupHeight;
    FillRect(target, &line, GetSysColorBrush(COLOR_BTNFACE));
    SelectObject(target, group_font_);
    DrawLine(target, group.title, RGB(0, 0, 0), {line.left + 8, line.top, line.right, line.bottom},
             DT_LEFT);
    SelectObject(target, name_font_);
    for (const Contact& contact : group.contacts) {
      line.top = line.bottom;
      line.bottom = line.top + kContactHeight;
      PaintContact(target, contact, line);
    }
    line.top = line.bottom;
  }
  SelectObject(target, old_font);
}
