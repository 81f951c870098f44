#include "wizard/win32/hanging_lines.h"

// commctrl.h needs windows.h before it.
#include <commctrl.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "wizard/win32/gdi.h"

namespace wizard::win32 {
namespace {

constexpr UINT_PTR hanging_id = 4;
constexpr std::wstring_view line_end = L"\r\n";
/// Begins every line that continues another one. No other line begins with so many blanks.
constexpr std::wstring_view continuation = L"\r\n        ";

/// How many characters of the text fit. At least one, so that the rest becomes shorter.
std::size_t fitting(HDC context, std::wstring_view text, int width) {
  int count = 0;
  SIZE size{};
  GetTextExtentExPointW(context, text.data(), static_cast<int>(text.size()), std::max(width, 0), &count, nullptr,
                        &size);
  return std::clamp<std::size_t>(static_cast<std::size_t>(count), 1, text.size());
}

/// Where a text of which so many characters fit is broken: behind a blank, else behind a folder of a path, else
/// anywhere but within a character.
std::size_t break_of(std::wstring_view text, std::size_t fits) {
  const std::size_t begin = text.find_first_not_of(L' ');
  if (const std::size_t blank = text.rfind(L' ', fits); blank != std::wstring_view::npos && blank > begin)
    return blank + 1;
  if (const std::size_t folder = text.rfind(L'\\', fits - 1); folder != std::wstring_view::npos) return folder + 1;
  return fits > 1 && IS_HIGH_SURROGATE(text[fits - 1]) ? fits - 1 : fits;
}

std::wstring broken_line(HDC context, std::wstring_view line, int width) {
  const std::wstring_view indent = continuation.substr(line_end.size());
  SIZE indented{};
  GetTextExtentPoint32W(context, indent.data(), static_cast<int>(indent.size()), &indented);
  std::wstring broken;
  int room = width;
  while (!line.empty()) {
    const std::size_t fits = fitting(context, line, room);
    if (fits == line.size()) break;
    const std::size_t end = break_of(line, fits);
    broken.append(line.substr(0, end)).append(continuation);
    line.remove_prefix(end);
    room = width - indented.cx;
  }
  return broken.append(line);
}

std::wstring broken_lines(HWND field, std::wstring_view whole) {
  RECT inside{};
  SendMessageW(field, EM_GETRECT, 0, reinterpret_cast<LPARAM>(&inside));
  if (inside.right <= inside.left) return std::wstring(whole);
  const WindowContext context(field);
  const Selection font(context.get(), reinterpret_cast<HGDIOBJ>(SendMessageW(field, WM_GETFONT, 0, 0)));
  TEXTMETRICW metrics{};
  GetTextMetricsW(context.get(), &metrics);
  // The field may measure a little differently.
  const int width = inside.right - inside.left - metrics.tmAveCharWidth / 2;
  std::wstring broken;
  for (std::size_t begin = 0;;) {
    const std::size_t end = whole.find(line_end, begin);
    broken += broken_line(context.get(), whole.substr(begin, end - begin), width);
    if (end == std::wstring_view::npos) return broken;
    broken += line_end;
    begin = end + line_end.size();
  }
}

std::wstring shown_text(HWND field) {
  std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(field)) + 1, L'\0');
  text.resize(static_cast<std::size_t>(GetWindowTextW(field, text.data(), static_cast<int>(text.size()))));
  return text;
}

/// The selected part of the field's text, its lines as they were given.
std::wstring selected_text(HWND field) {
  DWORD begin = 0, end = 0;
  SendMessageW(field, EM_GETSEL, reinterpret_cast<WPARAM>(&begin), reinterpret_cast<LPARAM>(&end));
  std::wstring text = shown_text(field);
  text = text.substr(std::min<std::size_t>(begin, text.size()), end - begin);
  for (std::size_t at = 0; (at = text.find(continuation, at)) != std::wstring_view::npos;)
    text.erase(at, continuation.size());
  return text;
}

void copy_selection(HWND field) {
  const std::wstring text = selected_text(field);
  if (text.empty() || OpenClipboard(field) == 0) return;
  const std::size_t size = (text.size() + 1) * sizeof(wchar_t);
  if (const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, size)) {
    std::memcpy(GlobalLock(memory), text.c_str(), size);
    GlobalUnlock(memory);
    EmptyClipboard();
    // The clipboard owns what it takes.
    if (SetClipboardData(CF_UNICODETEXT, memory) == nullptr) GlobalFree(memory);
  }
  CloseClipboard();
}

LRESULT CALLBACK hanging_procedure(HWND field, UINT message, WPARAM first, LPARAM second, UINT_PTR, DWORD_PTR data) {
  auto* const whole = reinterpret_cast<std::wstring*>(data);
  switch (message) {
    case WM_SETTEXT:
      *whole = second == 0 ? std::wstring() : reinterpret_cast<const wchar_t*>(second);
      return DefSubclassProc(field, message, first, reinterpret_cast<LPARAM>(broken_lines(field, *whole).c_str()));
    case WM_COPY:
      copy_selection(field);
      return 0;
    case WM_NCDESTROY: {
      RemoveWindowSubclass(field, hanging_procedure, hanging_id);
      const std::unique_ptr<std::wstring> end(whole);
      return DefSubclassProc(field, message, first, second);
    }
    case WM_SIZE:
    case WM_SETFONT:
    case EM_SETMARGINS: {
      const LRESULT result = DefSubclassProc(field, message, first, second);
      if (broken_lines(field, *whole) != shown_text(field)) SetWindowTextW(field, std::wstring(*whole).c_str());
      return result;
    }
    default:
      return DefSubclassProc(field, message, first, second);
  }
}

}  // namespace

void hang_lines(HWND field) {
  auto whole = std::make_unique<std::wstring>(shown_text(field));
  if (SetWindowSubclass(field, hanging_procedure, hanging_id, reinterpret_cast<DWORD_PTR>(whole.get())) == 0) return;
  const std::wstring text = *whole.release();
  if (!text.empty()) SetWindowTextW(field, text.c_str());
}

}  // namespace wizard::win32
