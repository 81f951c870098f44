"""Draws every picture of the project. Run from anywhere: python3 tools/draw_pictures [NAME …]

The results are committed, so that building needs no drawing tool. Drawing needs Debian's librsvg2-bin, imagemagick and
fonts-liberation. A NAME draws only the files whose name contains it.
"""

import pathlib
import sys

import charts
import panels
import svg
import tips

ROOT = pathlib.Path(__file__).resolve().parents[2]
PROGRAM = ROOT / "wizard" / "win32" / "pictures"
DEMO = ROOT / "demo" / "pics"

# Pictures of the program are drawn at twice their size at 100 %.
SHARP = 2


def jobs():
    """Every file and what draws it."""
    for name in panels.PANELS:
        yield PROGRAM / f"{name}.png", panels.panel, (name,), (panels.WIDTH, panels.HEIGHT), panels.WIDTH * SHARP
    for name, (draw, width, height) in tips.PICTURES.items():
        yield PROGRAM / f"{name}.png", draw, (), (width, height), width * SHARP
    for key, draw in charts.CHARTS.items():
        yield DEMO / f"ss_{key}.jpg", charts.screenshot, (draw,), charts.SIZE, charts.SIZE[0]
        yield DEMO / f"thmb_ss_{key}.jpg", charts.thumbnail, (draw,), charts.SIZE, charts.THUMBNAIL_WIDTH


def main(wanted):
    def chosen(target):
        return not wanted or any(name in target.name for name in wanted)

    for target, draw, arguments, (width, height), pixels in jobs():
        if chosen(target):
            svg.render(draw(*arguments), width, height, target, pixels)
    icon = PROGRAM / "firststeps.ico"
    if chosen(icon):
        svg.render_icon(panels.product_icon(), 64, icon, (16, 20, 24, 32, 40, 48, 64, 256))


if __name__ == "__main__":
    main(sys.argv[1:])
