"""The drawing kit: SVG text from small functions, one palette, and the way from SVG to a picture file."""

import pathlib
import subprocess

INK = "#153F4D"
DEEP, TEAL, SEA, MIST, PALE, SNOW = "#0B5067", "#128099", "#3FAFC2", "#A9DAE3", "#DDF0F4", "#F3FAFB"
WHITE, LINE, GREY = "#FFFFFF", "#D3E2E7", "#6F8C97"
BLUE, GREEN, AMBER, CORAL = "#3B7DC4", "#43B08A", "#F0B54A", "#EC7A5C"
FONT = "Liberation Sans"


def attributes(values):
    return "".join(f' {name.replace("_", "-")}="{value}"' for name, value in values.items() if value is not None)


def element(name, content="", **values):
    return f"<{name}{attributes(values)}>{content}</{name}>"


def rect(x, y, width, height, radius=0, fill=WHITE, **more):
    return element("rect", x=x, y=y, width=width, height=height, rx=radius, fill=fill, **more)


def circle(x, y, radius, fill=WHITE, **more):
    return element("circle", cx=x, cy=y, r=radius, fill=fill, **more)


def path(d, fill="none", **more):
    return element("path", d=d, fill=fill, **more)


def stroke(d, colour=INK, width=2.0, **more):
    return path(d, stroke=colour, stroke_width=width, stroke_linecap="round", stroke_linejoin="round", **more)


def line(x1, y1, x2, y2, colour=LINE, width=1.0, **more):
    return stroke(f"M{x1} {y1}L{x2} {y2}", colour, width, **more)


def text(x, y, content, size=15, fill=GREY, anchor="middle", weight="normal"):
    return element("text", content, x=x, y=y, fill=fill, text_anchor=anchor, font_family=FONT, font_size=size,
                   font_weight=weight)


def group(*parts, **values):
    return element("g", "".join(parts), **values)


def at(x, y, *parts, turn=0, scale=1):
    return group(*parts, transform=f"translate({x} {y}) rotate({turn}) scale({scale})")


def raised(*parts, depth="soft"):
    """Parts with a shadow below them: "soft" for objects, "flat" for small cards."""
    return group(*parts, filter=f"url(#{depth})")


def clipped(name, shape, *parts):
    return element("clipPath", shape, id=name) + group(*parts, clip_path=f"url(#{name})")


def gradient(name, top, bottom, across=False, top_opacity=1, bottom_opacity=1):
    stops = (element("stop", offset=0, stop_color=top, stop_opacity=top_opacity)
             + element("stop", offset=1, stop_color=bottom, stop_opacity=bottom_opacity))
    return element("linearGradient", stops, id=name, x1=0, y1=0, x2=1 if across else 0, y2=0 if across else 1)


def smooth(points, tension=6.0):
    """A path through all the points without corners."""
    d = f"M{points[0][0]:.1f} {points[0][1]:.1f}"
    for i in range(len(points) - 1):
        before, start, end, after = points[max(i - 1, 0)], points[i], points[i + 1], points[min(i + 2, len(points) - 1)]
        d += (f"C{start[0] + (end[0] - before[0]) / tension:.1f} {start[1] + (end[1] - before[1]) / tension:.1f} "
              f"{end[0] - (after[0] - start[0]) / tension:.1f} {end[1] - (after[1] - start[1]) / tension:.1f} "
              f"{end[0]:.1f} {end[1]:.1f}")
    return d


def drop(x, y, size, fill=CORAL):
    """A drop of blood with its middle at x, y."""
    shape = "M0 -1C0.45 -0.3 0.7 0.05 0.7 0.32A0.7 0.68 0 0 1 -0.7 0.32C-0.7 0.05 -0.45 -0.3 0 -1Z"
    return at(x, y, path(shape, fill), scale=size)


def shadow(name, down, blur, opacity):
    steps = (element("feGaussianBlur", **{"in": "SourceAlpha"}, stdDeviation=blur)
             + element("feOffset", dx=0, dy=down, result="blurred")
             + element("feFlood", flood_color="#06303D", flood_opacity=opacity)
             + element("feComposite", **{"in2": "blurred"}, operator="in", result="below")
             + element("feMerge", element("feMergeNode", **{"in": "below"})
                       + element("feMergeNode", **{"in": "SourceGraphic"})))
    return element("filter", steps, id=name, x="-30%", y="-30%", width="160%", height="160%")


SHADOWS = shadow("soft", 3, 3.5, 0.3) + shadow("flat", 1, 1.6, 0.22)


def write_svg(body, width, height):
    return (f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {width} {height}" width="{width}" height="{height}">'
            f"<defs>{SHADOWS}</defs>{body}</svg>").encode()


def render(body, width, height, target, pixels):
    """Draws the body, laid out on width x height, into a PNG or JPEG file that is `pixels` wide."""
    target = pathlib.Path(target)
    target.parent.mkdir(parents=True, exist_ok=True)
    size = ["-w", str(pixels), "-h", str(pixels * height // width)]
    png = subprocess.run(["rsvg-convert", *size, "-f", "png"], input=write_svg(body, width, height),
                         stdout=subprocess.PIPE, check=True).stdout
    if target.suffix == ".jpg":
        options = ["-quality", "88", "-sampling-factor", "4:4:4"]
    else:
        options = ["-define", "png:compression-level=9", "-define", "png:exclude-chunks=date,time"]
    subprocess.run(["convert", "png:-", "-strip", *options, str(target)], input=png, check=True)


def render_icon(body, side, target, sizes):
    """Draws one Windows icon with a picture for every size."""
    pictures = []
    for size in sizes:
        picture = pathlib.Path(target).with_suffix(f".{size}.png")
        render(body, side, side, picture, size)
        pictures.append(picture)
    subprocess.run(["convert", *map(str, pictures), str(target)], check=True)
    for picture in pictures:
        picture.unlink()
