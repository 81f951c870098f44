// The smallest Windows program with one window; the wizard's start is compared with it.
#include <windows.h>

namespace {

LRESULT CALLBACK paint_text(HWND window, UINT message, WPARAM first, LPARAM second) {
  if (message == WM_DESTROY) PostQuitMessage(0);
  if (message != WM_PAINT) return DefWindowProcW(window, message, first, second);
  PAINTSTRUCT painting;
  const HDC target = BeginPaint(window, &painting);
  TextOutW(target, 10, 10, L"Text", 4);
  EndPaint(window, &painting);
  return 0;
}

}  // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, PWSTR, int) {
  WNDCLASSEXW description{};
  description.cbSize = sizeof description;
  description.lpfnWndProc = paint_text;
  description.hInstance = instance;
  description.hbrBackground = GetSysColorBrush(COLOR_WINDOW);
  description.lpszClassName = L"FirstStepsBare";
  RegisterClassExW(&description);
  const HWND window = CreateWindowExW(0, L"FirstStepsBare", L"Bare", WS_OVERLAPPEDWINDOW, 100, 100, 600, 440, nullptr,
                                      nullptr, instance, nullptr);
  ShowWindow(window, SW_SHOWNORMAL);
  UpdateWindow(window);
  MSG message;
  while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
  return 0;
}
