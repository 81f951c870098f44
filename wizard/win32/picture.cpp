#include "wizard/win32/picture.h"

#include <shlwapi.h>
#include <wincodec.h>

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <vector>

#include "wizard/win32/text.h"

namespace wizard::win32 {
namespace {

struct ReleaseObject {
  void operator()(IUnknown* object) const noexcept { object->Release(); }
};
template <typename Interface>
using Com = std::unique_ptr<Interface, ReleaseObject>;

IWICImagingFactory* imaging() {
  static const Com<IWICImagingFactory> factory = [] {
    IWICImagingFactory* made = nullptr;
    CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER, IID_IWICImagingFactory,
                     reinterpret_cast<void**>(&made));
    return Com<IWICImagingFactory>(made);
  }();
  return factory.get();
}

bool is_number(std::string_view text) {
  return !text.empty() && std::ranges::all_of(text, [](unsigned char c) { return std::isdigit(c) != 0; });
}

HRSRC find_resource(std::string_view name) {
  if (is_number(name)) return FindResourceW(nullptr, MAKEINTRESOURCEW(std::stoi(std::string(name))), RT_RCDATA);
  return FindResourceW(nullptr, wide(name).c_str(), RT_RCDATA);
}

Com<IStream> open_resource(HRSRC resource) {
  const HGLOBAL loaded = LoadResource(nullptr, resource);
  const auto* bytes = static_cast<const BYTE*>(LockResource(loaded));
  return Com<IStream>(SHCreateMemStream(bytes, SizeofResource(nullptr, resource)));
}

Com<IStream> open_file(std::string_view path) {
  IStream* stream = nullptr;
  SHCreateStreamOnFileW(wide(path).c_str(), STGM_READ | STGM_SHARE_DENY_NONE, &stream);
  return Com<IStream>(stream);
}

Com<IWICBitmapSource> decode(IStream* stream) {
  IWICBitmapDecoder* decoder = nullptr;
  if (FAILED(imaging()->CreateDecoderFromStream(stream, nullptr, WICDecodeMetadataCacheOnDemand, &decoder))) return {};
  const Com<IWICBitmapDecoder> decoder_owner(decoder);
  IWICBitmapFrameDecode* frame = nullptr;
  if (FAILED(decoder->GetFrame(0, &frame))) return {};
  const Com<IWICBitmapFrameDecode> frame_owner(frame);
  IWICBitmapSource* converted = nullptr;
  if (FAILED(WICConvertBitmapSource(GUID_WICPixelFormat32bppPBGRA, frame, &converted))) return {};
  return Com<IWICBitmapSource>(converted);
}

/// A picture wider or higher than this is no picture of ours, and would cost too much memory.
constexpr UINT largest_side = 8192;

Picture copy_pixels(IWICBitmapSource* source) {
  UINT width = 0, height = 0;
  if (FAILED(source->GetSize(&width, &height)) || width == 0 || height == 0 || width > largest_side ||
      height > largest_side) {
    return {};
  }
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = static_cast<LONG>(width);
  info.bmiHeader.biHeight = -static_cast<LONG>(height);
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  void* bits = nullptr;
  Picture picture;
  picture.bitmap.reset(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
  if (!picture.bitmap) return {};
  const UINT stride = width * 4;
  if (FAILED(source->CopyPixels(nullptr, stride, stride * height, static_cast<BYTE*>(bits)))) return {};
  picture.width = static_cast<int>(width);
  picture.height = static_cast<int>(height);
  const auto* pixel = static_cast<const std::uint32_t*>(bits);
  picture.transparent =
      std::any_of(pixel, pixel + std::size_t{width} * height, [](std::uint32_t value) { return value >> 24 != 255; });
  return picture;
}

void set_halftone(HDC target, POINT& origin) {
  SetStretchBltMode(target, HALFTONE);
  SetBrushOrgEx(target, 0, 0, &origin);
}

}  // namespace

Picture load_picture(std::string_view name_or_path) {
  if (name_or_path.empty() || imaging() == nullptr) return {};
  const HRSRC resource = find_resource(name_or_path);
  const Com<IStream> stream = resource != nullptr ? open_resource(resource) : open_file(name_or_path);
  if (!stream) return {};
  const Com<IWICBitmapSource> source = decode(stream.get());
  return source ? copy_pixels(source.get()) : Picture{};
}

void draw_picture(HDC target, const RECT& place, const Picture& picture) {
  const MemoryContext memory(CreateCompatibleDC(target));
  const Selection selection(memory.get(), picture.bitmap.get());
  const int width = place.right - place.left, height = place.bottom - place.top;
  POINT origin{};
  set_halftone(target, origin);
  if (picture.transparent) {
    const BLENDFUNCTION over{AC_SRC_OVER, 0, 255, AC_SRC_ALPHA};
    GdiAlphaBlend(target, place.left, place.top, width, height, memory.get(), 0, 0, picture.width, picture.height,
                  over);
  } else {
    StretchBlt(target, place.left, place.top, width, height, memory.get(), 0, 0, picture.width, picture.height,
               SRCCOPY);
  }
  SetBrushOrgEx(target, origin.x, origin.y, nullptr);
}

RECT fitted(const RECT& place, const Picture& picture) {
  const int width = place.right - place.left, height = place.bottom - place.top;
  int shown_width = width, shown_height = MulDiv(width, picture.height, std::max(1, picture.width));
  if (shown_height > height) {
    shown_height = height;
    shown_width = MulDiv(height, picture.width, std::max(1, picture.height));
  }
  const int left = place.left + (width - shown_width) / 2, top = place.top + (height - shown_height) / 2;
  return {left, top, left + shown_width, top + shown_height};
}

}  // namespace wizard::win32
