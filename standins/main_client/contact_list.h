#pragma once

#include <windows.h>

/// Paints the client's contacts in their groups, and marks those who are online.
class ContactList {
 public:
  ContactList();
  ~ContactList();
  ContactList(const ContactList&) = delete;
  ContactList& operator=(const ContactList&) = delete;

  /// Paints the whole list into an area of client coordinates.
  void Paint(HDC target, const RECT& area) const;

 private:
  HFONT name_font_;
  HFONT group_font_;
};
