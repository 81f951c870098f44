#include "wizard/win32/picture.h"

#include <shlwapi.h>

#include <algorithm>
#include <cstdint>
#include <utility>

#include "support/text.h"
#include "support/win32/system_function.h"
#include "support/win32/wide.h"

namespace wizard::win32 {
namespace {

HRSRC find_resource(std::string_view name) {
  if (const auto number = support::parse_whole<WORD>(name))
    return FindResourceW(nullptr, MAKEINTRESOURCEW(*number), RT_RCDATA);
  return FindResourceW(nullptr, support::wide(name).c_str(), RT_RCDATA);
}

Com<IStream> open_resource(HRSRC resource) {
  const HGLOBAL loaded = LoadResource(nullptr, resource);
  const auto* bytes = static_cast<const BYTE*>(LockResource(loaded));
  static auto* const create =
      support::system_function<decltype(SHCreateMemStream)>(L"shlwapi.dll", "SHCreateMemStream");
  return Com<IStream>(create == nullptr ? nullptr : create(bytes, SizeofResource(nullptr, resource)));
}

Com<IStream> open_file(std::string_view path) {
  static auto* const create =
      support::system_function<decltype(SHCreateStreamOnFileW)>(L"shlwapi.dll", "SHCreateStreamOnFileW");
  IStream* stream = nullptr;
  if (create != nullptr) create(support::wide_path(path).c_str(), STGM_READ | STGM_SHARE_DENY_NONE, &stream);
  return Com<IStream>(stream);
}

template <typename Interface>
Com<Interface> create(const CLSID& object) {
  void* created = nullptr;
  if (FAILED(CoCreateInstance(object, nullptr, CLSCTX_INPROC_SERVER, __uuidof(Interface), &created))) return {};
  return Com<Interface>(static_cast<Interface*>(created));
}

/// By the first byte. Asked to find the decoder itself, the system would try all that are installed.
const CLSID& decoder_of(IStream* stream) {
  constexpr char png_mark = '\x89';
  char first = 0;
  stream->Read(&first, 1, nullptr);
  stream->Seek({}, STREAM_SEEK_SET, nullptr);
  return first == png_mark ? CLSID_WICPngDecoder : CLSID_WICJpegDecoder;
}

Com<IWICBitmapSource> decode(IWICImagingFactory* imaging, IStream* stream) {
  const Com<IWICBitmapDecoder> decoder = create<IWICBitmapDecoder>(decoder_of(stream));
  IWICBitmapFrameDecode* frame = nullptr;
  if (!decoder || FAILED(decoder->Initialize(stream, WICDecodeMetadataCacheOnDemand)) ||
      FAILED(decoder->GetFrame(0, &frame)))
    return {};
  const Com<IWICBitmapFrameDecode> frame_owner(frame);
  IWICFormatConverter* converter = nullptr;
  if (FAILED(imaging->CreateFormatConverter(&converter))) return {};
  Com<IWICFormatConverter> converted(converter);
  if (FAILED(converter->Initialize(frame, GUID_WICPixelFormat32bppPBGRA, WICBitmapDitherTypeNone, nullptr, 0,
                                   WICBitmapPaletteTypeCustom)))
    return {};
  return converted;
}

struct Canvas {
  Picture picture;
  void* pixels = nullptr;
};

Canvas make_canvas(int width, int height) {
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = width;
  info.bmiHeader.biHeight = -height;
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  Canvas canvas;
  canvas.picture.bitmap.reset(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &canvas.pixels, nullptr, 0));
  canvas.picture.width = width;
  canvas.picture.height = height;
  return canvas;
}

/// A picture wider or higher than this is no picture of ours, and would cost too much memory.
constexpr UINT largest_side = 8192;

Picture copy_pixels(IWICBitmapSource* source) {
  UINT width = 0, height = 0;
  if (FAILED(source->GetSize(&width, &height)) || width == 0 || height == 0 || width > largest_side ||
      height > largest_side) {
    return {};
  }
  Canvas canvas = make_canvas(static_cast<int>(width), static_cast<int>(height));
  if (!canvas.picture) return {};
  const UINT stride = width * 4;
  if (FAILED(source->CopyPixels(nullptr, stride, stride * height, static_cast<BYTE*>(canvas.pixels)))) return {};
  const auto* pixel = static_cast<const std::uint32_t*>(canvas.pixels);
  canvas.picture.transparent =
      std::any_of(pixel, pixel + std::size_t{width} * height, [](std::uint32_t value) { return value >> 24 != 255; });
  return std::move(canvas.picture);
}

}  // namespace

Picture PictureLoader::load(std::string_view name_or_path) {
  if (name_or_path.empty()) return {};
  if (!imaging_) imaging_ = create<IWICImagingFactory>(CLSID_WICImagingFactory);
  const HRSRC resource = find_resource(name_or_path);
  const Com<IStream> stream = resource != nullptr ? open_resource(resource) : open_file(name_or_path);
  if (!imaging_ || !stream) return {};
  const Com<IWICBitmapSource> source = decode(imaging_.get(), stream.get());
  return source ? copy_pixels(source.get()) : Picture{};
}

void draw_picture(HDC target, const RECT& place, const Picture& picture) {
  const MemoryContext memory(CreateCompatibleDC(target));
  const Selection selection(memory.get(), picture.bitmap.get());
  const int width = place.right - place.left, height = place.bottom - place.top;
  if (picture.transparent) {
    const BLENDFUNCTION over{AC_SRC_OVER, 0, 255, AC_SRC_ALPHA};
    GdiAlphaBlend(target, place.left, place.top, width, height, memory.get(), 0, 0, picture.width, picture.height,
                  over);
  } else {
    stretch(target, place, memory.get(), {0, 0, picture.width, picture.height});
  }
}

Picture scaled(const Picture& picture, int width, int height, COLORREF background) {
  Picture result = make_canvas(width, height).picture;
  if (!result || !picture) return {};
  const MemoryContext memory(CreateCompatibleDC(nullptr));
  const Selection canvas(memory.get(), result.bitmap.get());
  const Brush brush(CreateSolidBrush(background));
  const RECT whole{0, 0, width, height};
  FillRect(memory.get(), &whole, brush.get());
  draw_picture(memory.get(), whole, picture);
  return result;
}

void stretch(HDC target, const RECT& place, HDC source, const RECT& part) {
  const int source_width = part.right - part.left, source_height = part.bottom - part.top;
  const int width = place.right - place.left, height = place.bottom - place.top;
  if (width == source_width && height == source_height) {
    BitBlt(target, place.left, place.top, width, height, source, part.left, part.top, SRCCOPY);
    return;
  }
  // Half-tone mode takes the brush's origin into its pattern: it must be set after the mode.
  const int mode = SetStretchBltMode(target, HALFTONE);
  POINT origin{};
  SetBrushOrgEx(target, 0, 0, &origin);
  StretchBlt(target, place.left, place.top, width, height, source, part.left, part.top, source_width, source_height,
             SRCCOPY);
  SetBrushOrgEx(target, origin.x, origin.y, nullptr);
  SetStretchBltMode(target, mode);
}

}  // namespace wizard::win32
