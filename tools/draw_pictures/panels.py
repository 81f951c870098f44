"""The tall pictures beside a page: one calm background, one object of the daily life with diabetes. 144 x 368 units."""

from svg import (AMBER, CORAL, DEEP, GREEN, GREY, INK, LINE, MIST, PALE, SEA, TEAL, WHITE, at, circle, drop, gradient,
                 line, path, raised, rect, smooth, stroke)

WIDTH, HEIGHT = 144, 368


def background():
    curve = [(-6, 300), (16, 288), (34, 299), (52, 276), (70, 294), (90, 268), (110, 288), (130, 274), (152, 282)]
    return (gradient("ground", "#2A9BB2", DEEP) + gradient("fade", WHITE, WHITE, False, 0.16, 0)
            + rect(0, 0, WIDTH, HEIGHT, fill="url(#ground)")
            + circle(126, 34, 70, WHITE, fill_opacity=0.06) + circle(8, 330, 84, WHITE, fill_opacity=0.05)
            + circle(72, 158, 61, WHITE, fill_opacity=0.12) + circle(72, 158, 49, WHITE, fill_opacity=0.12)
            + path(smooth(curve) + f"L152 {HEIGHT}L-6 {HEIGHT}Z", "url(#fade)")
            + stroke(smooth(curve), WHITE, 1.6, stroke_opacity=0.5)
            + "".join(circle(x, y, 2.6, WHITE, fill_opacity=0.85) for x, y in curve[1:-1:2]))


def pen():
    """An insulin pen, lying along the x axis from 0 to 128."""
    body = gradient("body", "#FDFEFE", "#C9DDE4") + gradient("cap", "#2F86C6", "#1B5E9B")
    return (body
            + rect(-8, -4.5, 10, 9, 2.5, "#8EC5EE") + rect(0, -8, 74, 16, 4, "url(#body)")
            + rect(5, -8, 11, 16, 0, "url(#cap)") + rect(22, -4, 13, 8, 2, "#174C5C")
            + rect(24, -2, 9, 4, 1, "#BFEBD9")
            + rect(70, -6.5, 34, 13, 2.5, "#E8F4F7", fill_opacity=0.95) + rect(73, -4, 24, 8, 2, "#8ED0DD")
            + rect(84, -4, 3, 8, 0, "#5A7F8C")
            + "".join(line(x, -6, x, -3, GREY, 0.8) for x in range(76, 98, 4))
            + rect(103, -4, 9, 8, 2, "#9FB8C1") + line(112, 0, 127, 0, "#EAF2F5", 1.3))


def vial():
    return (gradient("glass", "#F6FCFD", "#CFE7ED")
            + rect(-13, 8, 26, 42, 5, "url(#glass)")
            + path("M-13 25H13V45A5 5 0 0 1 8 50H-8A5 5 0 0 1 -13 45Z", "#A6DCE6")
            + rect(-13, 20, 26, 18, 0, WHITE) + rect(-9, 24, 18, 2.6, 1.3, TEAL) + rect(-9, 29, 12, 2.2, 1.1, MIST)
            + rect(-9, 33, 15, 2.2, 1.1, MIST)
            + rect(-8, 2, 16, 7, 1, "#E2EEF2") + rect(-10.5, -6, 21, 9, 2.5, CORAL)
            + rect(-10.5, -6, 21, 3, 1.5, "#F49B82"))


def insulin():
    return raised(at(96, 122, vial(), turn=8)) + raised(at(30, 172, pen(), turn=-57))


def blister():
    pockets = ""
    for row in range(4):
        for column in range(2):
            x, y = 14 + column * 22, 14 + row * 19
            taken = (row, column) in ((0, 0), (0, 1), (1, 0))
            pockets += circle(x, y, 8.2, "#B3CBD3" if taken else "#F6FBFC")
            if taken:
                pockets += stroke(f"M{x - 4} {y - 2}L{x} {y + 1}L{x + 4} {y - 3}", "#8FACB6", 1.2)
            else:
                pockets += circle(x, y, 6, WHITE, stroke=LINE) + circle(x - 2, y - 2, 2, PALE)
    return gradient("foil", "#EAF3F6", "#BBD3DB") + rect(0, 0, 50, 86, 6, "url(#foil)") + pockets


def capsule():
    return (gradient("half", "#F2906F", "#DC5F45") + gradient("other", WHITE, "#D9E8ED")
            + rect(-22, -8, 44, 16, 8, "url(#other)") + path("M0 -8H-14A8 8 0 0 0 -14 8H0Z", "url(#half)")
            + rect(-16, -5.5, 32, 3, 1.5, WHITE, fill_opacity=0.45))


def tablet():
    return (gradient("edge", "#FFFFFF", "#D5E6EB") + circle(0, 1.5, 13, "#B7CFD8") + circle(0, 0, 13, "url(#edge)")
            + line(-8, 5, 8, -5, "#BDD3DB", 1.6))


def tablets():
    return (raised(at(54, 70, blister(), turn=10)) + raised(at(42, 152, capsule(), turn=-32))
            + raised(at(96, 168, tablet())) + raised(at(66, 178, tablet(), scale=0.8)))


def targets():
    rows = ((0, 26, GREEN), (1, 42, AMBER), (2, 17, SEA))
    card = rect(0, 0, 76, 62, 7, WHITE)
    for row, knob, colour in rows:
        y = 15 + row * 16
        card += rect(10, y - 2, 56, 4, 2, PALE) + rect(10, y - 2, knob, 4, 2, colour)
        card += circle(10 + knob, y, 5.4, WHITE, stroke=colour, stroke_width=2.6)
    rings = "".join(circle(0, 0, radius, fill) for radius, fill in
                    ((31, WHITE), (26, CORAL), (20, WHITE), (14, CORAL), (7.5, WHITE), (3.6, DEEP)))
    arrow = line(0, 0, 25, -25, INK, 2.2) + path("M20 -27L28 -35L30 -30L35 -28L27 -20Z", AMBER)
    return raised(at(64, 102, rings)) + at(64, 102, arrow) + raised(at(34, 136, card, turn=-4))


def digit(x, y, segments, colour):
    """A seven-segment digit, 9 wide and 16 high."""
    bars = {"a": (0, 0, 9, 0), "b": (9, 0, 9, 8), "c": (9, 8, 9, 16), "d": (0, 16, 9, 16), "e": (0, 8, 0, 16),
            "f": (0, 0, 0, 8), "g": (0, 8, 9, 8)}
    return "".join(line(x + bars[s][0], y + bars[s][1], x + bars[s][2], y + bars[s][3], colour, 2.4) for s in segments)


def meter():
    screen = rect(9, 13, 50, 38, 5, "#CDE9E4")
    screen += digit(9, 24, "bc", INK) + digit(27, 24, "abcdef", INK) + digit(43, 24, "abcdef", INK)
    return (gradient("case", "#FFFFFF", "#D7E7EC")
            + rect(24, -16, 20, 22, 2, "#EDF5F7") + rect(30, -16, 8, 6, 1, CORAL)
            + rect(0, 0, 68, 104, 17, "url(#case)") + rect(4, 6, 60, 58, 13, DEEP) + screen
            + circle(34, 83, 12, TEAL) + circle(34, 83, 7, SEA)
            + path("M9 80L14 76V84Z", MIST) + path("M59 80L54 76V84Z", MIST))


def units():
    return (raised(at(30, 88, meter(), turn=-7)) + raised(drop(104, 74, 15)) + path(
        "M99 80A7 7 0 0 0 104 85", "none", stroke=WHITE, stroke_width=2, stroke_linecap="round", stroke_opacity=0.7))


def book():
    shades = ("#D5E4E9", WHITE, "#E6F0F3", WHITE)
    pages = "".join(rect(5, 4 + i * 1.6, 76, 98, 4, shade) for i, shade in enumerate(shades))
    cover = (gradient("cover", "#2D93D0", "#1B62A6") + rect(0, 0, 76, 100, 6, "url(#cover)")
             + rect(0, 0, 13, 100, 6, "#174F8A") + rect(7, 0, 6, 100, 0, "#174F8A"))
    label = rect(24, 18, 42, 46, 5, WHITE) + drop(45, 42, 14) + path(
        "M38 47A7 6.6 0 0 0 42 51.5", "none", stroke=WHITE, stroke_width=1.8, stroke_linecap="round")
    return pages + cover + label + rect(24, 74, 42, 4, 2, WHITE, fill_opacity=0.75) + rect(
        24, 82, 28, 4, 2, WHITE, fill_opacity=0.45) + path("M60 -3H68V20L64 15L60 20Z", AMBER)


def pencil():
    return (rect(0, -4, 52, 8, 0, AMBER) + rect(0, -4, 52, 3, 0, "#F7CE7E") + path("M52 -4L64 0L52 4Z", "#F6E3C3")
            + path("M60 -1.4L64 0L60 1.4Z", INK) + rect(-6, -4, 6, 8, 0, "#C9D8DE") + rect(-14, -4, 9, 8, 3, CORAL))


def diary():
    return raised(at(32, 72, book(), turn=-5)) + raised(at(112, 138, pencil(), turn=122))


def finish():
    sheet = rect(0, 0, 74, 94, 7, "#2C6E86") + rect(6, 9, 62, 79, 4, WHITE) + rect(22, -5, 30, 13, 5, "#DCEBF0")
    sheet += circle(37, 0, 2.4, "#2C6E86")
    for row in range(3):
        y = 27 + row * 16
        sheet += rect(13, y - 5, 10, 10, 3, PALE) + stroke(f"M15.4 {y}L17.6 {y + 2.4}L21 {y - 2.4}", GREEN, 2)
        sheet += rect(29, y - 4, 31 - row * 5, 3.4, 1.7, MIST) + rect(29, y + 1.6, 22, 2.8, 1.4, PALE)
    badge = (gradient("badge", "#57C49D", "#2F9673") + circle(0, 0, 24, WHITE) + circle(0, 0, 20.5, "url(#badge)")
             + stroke("M-9 0L-2.6 6.6L9.6 -6.4", WHITE, 4.6))
    return raised(at(32, 76, sheet, turn=-4)) + raised(at(100, 160, badge))


PANELS = {"101": insulin, "102": tablets, "103": targets, "104": units, "105": diary, "106": finish}


def panel(name):
    return background() + at(2, 36, PANELS[name]())


def product_icon():
    """A diary with a drop, on 64 x 64 units; few shapes, so that it still reads at 16 pixels."""
    return (gradient("cover", "#2FA3BA", DEEP)
            + rect(10, 6, 48, 56, 7, "#B5CDD5") + rect(10, 4, 46, 55, 6, WHITE)
            + rect(5, 2, 48, 55, 7, "url(#cover)") + rect(5, 2, 12, 55, 7, "#083E51") + rect(12, 2, 5, 55, 0, "#083E51")
            + drop(35, 30, 18, WHITE) + drop(35, 32, 12.5, CORAL))
