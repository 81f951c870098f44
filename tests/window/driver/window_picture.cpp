#include "tests/window/driver/window_picture.h"

#include <vector>

#include "support/win32/wide.h"
#include "wizard/win32/gdi.h"
// wincodec.h needs windows.h before it.
#include <wincodec.h>

#include "wizard/win32/com.h"

namespace window_driver {
namespace {

using wizard::win32::Com;

wizard::win32::Bitmap copy_of_screen(const RECT& place) {
  const wizard::win32::WindowContext screen(nullptr);
  const wizard::win32::MemoryContext memory(CreateCompatibleDC(screen.get()));
  const int width = place.right - place.left, height = place.bottom - place.top;
  wizard::win32::Bitmap bitmap(CreateCompatibleBitmap(screen.get(), width, height));
  const wizard::win32::Selection selection(memory.get(), bitmap.get());
  BitBlt(memory.get(), 0, 0, width, height, screen.get(), place.left, place.top, SRCCOPY);
  return bitmap;
}

Com<IWICImagingFactory> imaging_factory() {
  IWICImagingFactory* factory = nullptr;
  CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER, IID_IWICImagingFactory,
                   reinterpret_cast<void**>(&factory));
  return Com<IWICImagingFactory>(factory);
}

bool write_png(IWICImagingFactory& imaging, HBITMAP bitmap, const std::wstring& path) {
  IWICBitmap* source = nullptr;
  if (FAILED(imaging.CreateBitmapFromHBITMAP(bitmap, nullptr, WICBitmapIgnoreAlpha, &source))) return false;
  const Com<IWICBitmap> source_owner(source);
  IWICStream* stream = nullptr;
  if (FAILED(imaging.CreateStream(&stream))) return false;
  const Com<IWICStream> stream_owner(stream);
  IWICBitmapEncoder* encoder = nullptr;
  if (FAILED(imaging.CreateEncoder(GUID_ContainerFormatPng, nullptr, &encoder))) return false;
  const Com<IWICBitmapEncoder> encoder_owner(encoder);
  IWICBitmapFrameEncode* frame = nullptr;
  if (FAILED(stream->InitializeFromFilename(path.c_str(), GENERIC_WRITE)) ||
      FAILED(encoder->Initialize(stream, WICBitmapEncoderNoCache)) || FAILED(encoder->CreateNewFrame(&frame, nullptr)))
    return false;
  const Com<IWICBitmapFrameEncode> frame_owner(frame);
  return SUCCEEDED(frame->Initialize(nullptr)) && SUCCEEDED(frame->WriteSource(source, nullptr)) &&
         SUCCEEDED(frame->Commit()) && SUCCEEDED(encoder->Commit());
}

}  // namespace

bool save_picture(HWND window, const std::string& path) {
  const wizard::win32::ComSession com;
  RECT place;
  if (GetWindowRect(window, &place) == 0) return false;
  const wizard::win32::Bitmap bitmap = copy_of_screen(place);
  const Com<IWICImagingFactory> imaging = imaging_factory();
  return bitmap && imaging && write_png(*imaging, bitmap.get(), support::wide_path(path));
}

namespace {

/// All at once, because each GetPixel() is a call of the display.
std::vector<COLORREF> pixels_of(HWND window) {
  RECT place;
  if (GetWindowRect(window, &place) == 0) return {};
  const wizard::win32::Bitmap bitmap = copy_of_screen(place);
  const LONG width = place.right - place.left, height = place.bottom - place.top;
  BITMAPINFO format{};
  BITMAPINFOHEADER& head = format.bmiHeader;
  head.biSize = sizeof head;
  head.biWidth = width;
  head.biHeight = -height;
  head.biPlanes = 1;
  head.biBitCount = 32;
  std::vector<COLORREF> pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
  const wizard::win32::WindowContext screen(nullptr);
  GetDIBits(screen.get(), bitmap.get(), 0, static_cast<UINT>(height), pixels.data(), &format, DIB_RGB_COLORS);
  // The bytes come as blue, green, red.
  for (COLORREF& pixel : pixels) pixel = RGB(GetBValue(pixel), GetGValue(pixel), GetRValue(pixel));
  return pixels;
}

}  // namespace

std::map<COLORREF, std::size_t> colours_of(HWND window) {
  std::map<COLORREF, std::size_t> colours;
  for (const COLORREF pixel : pixels_of(window)) ++colours[pixel];
  return colours;
}

std::size_t count_colours(HWND window) { return colours_of(window).size(); }

std::size_t checksum(HWND window) {
  std::size_t sum = 0;
  for (const COLORREF pixel : pixels_of(window)) sum = sum * 31 + pixel;
  return sum;
}

}  // namespace window_driver
