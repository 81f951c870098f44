"""The charts that a home page can show, as screenshots and as thumbnails. Invented readings, the same in every run."""

import math
import random

from svg import (AMBER, BLUE, CORAL, DEEP, GREEN, INK, LINE, MIST, PALE, SEA, SNOW, TEAL, WHITE, circle, gradient,
                 line, path, raised, rect, smooth, stroke, text)

SIZE = (800, 528)
THUMBNAIL_WIDTH = 240


class Frame:
    """The plot area: it turns values into positions and knows how much detail there is room for."""

    def __init__(self, detailed):
        self.detailed = detailed
        self.left, self.right, self.top, self.bottom = (86, 760, 62, 450) if detailed else (44, 756, 44, 484)
        self.pen = 1.0 if detailed else 1.9
        self.low = self.high = self.first = self.last = 0

    def scale(self, first, last, low, high):
        self.first, self.last, self.low, self.high = first, last, low, high

    def x(self, value):
        return self.left + (value - self.first) / (self.last - self.first) * (self.right - self.left)

    def y(self, value):
        return self.bottom - (value - self.low) / (self.high - self.low) * (self.bottom - self.top)

    def point(self, pair):
        return self.x(pair[0]), self.y(pair[1])

    def grid(self, values, marks, unit):
        """Horizontal lines at the values, and the marks (position, label) below."""
        drawn = "".join(line(self.left, self.y(v), self.right, self.y(v), LINE, self.pen) for v in values)
        if not self.detailed:
            return drawn
        drawn += "".join(self.beside(v, f"{v:g}".replace(".", ",")) for v in values)
        drawn += "".join(self.below(v, label) for v, label in marks)
        return drawn + text(self.left - 14, self.top - 22, unit, 17, anchor="end" if len(unit) < 6 else "middle")

    def beside(self, value, label):
        return text(self.left - 14, self.y(value) + 6, label, 17, anchor="end")

    def below(self, value, label):
        return text(self.x(value), self.bottom + 30, label, 17)

    def band(self, low, high, colour=GREEN, opacity=0.16):
        top = self.y(high)
        return rect(self.left, top, self.right - self.left, self.y(low) - top, 0, colour, fill_opacity=opacity)

    def target(self, value, colour=GREEN):
        return line(self.left, self.y(value), self.right, self.y(value), colour, 2.4 * self.pen,
                    stroke_dasharray=f"{9 * self.pen} {8 * self.pen}")

    def curve(self, points, colour=TEAL, width=4.0):
        return stroke(smooth([self.point(p) for p in points]), colour, width * self.pen)

    def area(self, points, fill):
        places = [self.point(p) for p in points]
        return path(smooth(places) + f"L{places[-1][0]:.1f} {self.bottom}L{places[0][0]:.1f} {self.bottom}Z", fill)

    def dot(self, pair, colour, size=7.0):
        x, y = self.point(pair)
        return circle(round(x, 1), round(y, 1), size * self.pen ** 0.7, colour, stroke=WHITE,
                      stroke_width=2.4 * self.pen ** 0.7)

    def column(self, x, low, high, width, colour, radius=4):
        top = self.y(high)
        return rect(round(self.x(x) - width / 2, 1), round(top, 1), width, round(self.y(low) - top, 1), radius, colour)


def glucose_colour(value):
    return CORAL if value < 80 else AMBER if value > 160 else TEAL


def hours(step=4):
    return [(hour, f"{hour}:00") for hour in range(0, 25, step)]


def days(count, step):
    return [(day, f"{day:02d}.") for day in range(1, count + 1, step)]


def day(frame):
    frame.scale(0, 24, 40, 260)
    readings = [(0, 118), (3, 96), (5.5, 84), (7, 112), (8.7, 206), (10.5, 148), (12, 104), (13.6, 188), (15.5, 132),
                (17, 66), (18.3, 108), (19.8, 172), (21.5, 138), (24, 122)]
    dots = "".join(frame.dot(r, glucose_colour(r[1]), 8) for r in readings[1:-1])
    return (frame.band(80, 160) + frame.grid(range(50, 251, 50), hours(), "mg/dl")
            + frame.area(readings, "url(#below)") + frame.curve(readings) + dots)


def trend(frame):
    source = random.Random(11)
    frame.scale(1, 28, 80, 220)
    means = [(d, 186 - 1.7 * d + source.gauss(0, 15)) for d in range(1, 29)]
    line_of_days = [(d, sum(v for _, v in means[max(0, d - 4):d + 3]) / len(means[max(0, d - 4):d + 3]))
                    for d in range(1, 29)]
    dots = "".join(circle(round(frame.x(d), 1), round(frame.y(v), 1), 6 * frame.pen ** 0.6, SEA, fill_opacity=0.65)
                   for d, v in means)
    return (frame.band(100, 150) + frame.grid(range(80, 221, 20), days(28, 3), "mg/dl") + dots
            + frame.target(125) + frame.curve(line_of_days, DEEP, 5))


def ring(x, y, radius, width, shares):
    drawn, angle = "", -math.pi / 2
    for share, colour in shares:
        end = angle + share * 2 * math.pi
        points = [(x + radius * math.cos(a), y + radius * math.sin(a)) for a in (angle + 0.03, end - 0.03)]
        drawn += path(f"M{points[0][0]:.1f} {points[0][1]:.1f}A{radius} {radius} 0 {int(share > 0.5)} 1 "
                      f"{points[1][0]:.1f} {points[1][1]:.1f}", stroke=colour, stroke_width=width)
        angle = end
    return drawn


def in_range(frame):
    shares = ((0.68, GREEN), (0.23, AMBER), (0.09, CORAL))
    if not frame.detailed:
        return ring(400, 264, 165, 82, shares) + text(400, 292, "68 %", 84, INK, weight="bold")
    drawn = ring(270, 264, 140, 62, shares) + text(270, 282, "68 %", 54, INK, weight="bold")
    for row, (share, colour) in enumerate((shares[1], shares[0], shares[2])):
        y = 160 + row * 88
        drawn += rect(500, y, 210, 20, 10, PALE) + rect(500, y, round(210 * share), 20, 10, colour)
        drawn += circle(508, y - 22, 8, colour) + text(528, y - 15, f"{share * 100:.0f} %", 22, INK, "start")
    return drawn


def insulin(frame):
    source = random.Random(5)
    frame.scale(0.3, 14.7, 0, 60)
    columns = ""
    for d in range(1, 15):
        basal, bolus = 22 + (d > 8) * 2, source.uniform(18, 31)
        columns += frame.column(d, 0, basal, 26, DEEP) + frame.column(d, basal + 0.6, basal + bolus, 26, SEA)
    return frame.grid(range(0, 61, 10), days(14, 1), "IE") + columns


def pressure(frame):
    source = random.Random(3)
    frame.scale(0.3, 14.7, 50, 170)
    drawn = frame.band(70, 90, BLUE, 0.12) + frame.band(100, 140) + frame.grid(range(60, 161, 20), days(14, 1), "mmHg")
    for d in range(1, 15):
        upper, lower = 132 + source.gauss(0, 9) - d * 0.4, 82 + source.gauss(0, 5)
        x = round(frame.x(d), 1)
        drawn += line(x, round(frame.y(lower), 1), x, round(frame.y(upper), 1), MIST, 9 * frame.pen ** 0.8)
        drawn += frame.dot((d, upper), CORAL if upper > 140 else TEAL, 8) + frame.dot((d, lower), BLUE, 8)
    return drawn


def weight(frame):
    source = random.Random(8)
    frame.scale(0, 12, 76, 90)
    values = [(month, 87.6 - 5.6 * (1 - math.exp(-month / 6)) * 1.25 + source.gauss(0, 0.35)) for month in range(13)]
    marks = [(month, str(month)) for month in range(1, 13)]
    return (frame.grid(range(76, 91, 2), marks, "kg") + frame.area(values, "url(#below)") + frame.target(80)
            + frame.curve(values, TEAL, 4.5) + frame.dot(values[-1], DEEP, 10))


def hba1c(frame):
    frame.scale(0.4, 8.6, 5.5, 9.5)
    values = [8.9, 8.4, 7.9, 7.6, 7.1, 7.2, 6.8, 6.6]
    drawn = frame.grid((6, 7, 8, 9), [(i, f"{(i - 1) % 4 + 1}/{25 + (i - 1) // 4}") for i in range(1, 9)], "%")
    drawn += frame.band(5.5, 7) + frame.target(7)
    for i, value in enumerate(values, 1):
        colour = GREEN if value < 7 else AMBER if value < 8 else CORAL
        drawn += frame.column(i, 5.5, value, 44, colour, 6)
        if frame.detailed:
            drawn += text(frame.x(i), frame.y(value) + 26, f"{value:.1f}".replace(".", ","), 17, WHITE, weight="bold")
    return drawn


def standard_day(frame):
    frame.scale(0, 24, 40, 260)
    middle = [(0, 124), (3, 112), (6, 108), (8, 158), (10, 142), (12, 116), (14, 164), (16, 138), (18, 120), (20, 158),
              (22, 140), (24, 126)]
    spread = [24, 20, 18, 38, 30, 24, 42, 28, 26, 40, 32, 24]

    def around(factor):
        upper = [frame.point((h, v + s * factor * 1.15)) for (h, v), s in zip(middle, spread)]
        lower = [frame.point((h, v - s * factor * 0.8)) for (h, v), s in zip(middle, spread)]
        return smooth(upper) + smooth(lower[::-1]).replace("M", "L", 1) + "Z"

    return (frame.grid(range(50, 251, 50), hours(), "mg/dl") + path(around(1.75), MIST, fill_opacity=0.55)
            + path(around(0.85), SEA, fill_opacity=0.6) + frame.curve(middle, DEEP, 4.5)
            + frame.target(80) + frame.target(160))


def basal(frame):
    rates = [0.7, 0.65, 0.6, 0.65, 0.8, 1.0, 1.15, 1.2, 1.05, 0.9, 0.8, 0.75, 0.7, 0.7, 0.75, 0.85, 0.95, 1.0, 0.95,
             0.9, 0.85, 0.8, 0.75, 0.7]
    frame.scale(0, 24, 0, 1.4)
    top = ""
    for hour, rate in enumerate(rates):
        top += f"L{frame.x(hour):.1f} {frame.y(rate):.1f}L{frame.x(hour + 1):.1f} {frame.y(rate):.1f}"
    top = "M" + top[1:]
    return (frame.grid((0, 0.2, 0.4, 0.6, 0.8, 1, 1.2, 1.4), hours(), "IE/h")
            + path(top + f"L{frame.right} {frame.bottom}L{frame.left} {frame.bottom}Z", "url(#below)")
            + stroke(top, TEAL, 4 * frame.pen))


def carbohydrates(frame):
    source = random.Random(21)
    frame.scale(0.4, 10.6, 0.4, 4.6)
    usual = {1: (36, AMBER), 2: (60, GREEN), 3: (18, SEA), 4: (52, BLUE)}
    drawn = "".join(line(frame.left, frame.y(row), frame.right, frame.y(row), LINE, frame.pen) for row in range(1, 5))
    for meal, (grams, colour) in usual.items():
        for d in range(1, 11):
            amount = max(6, source.gauss(grams, 11))
            x, y = frame.point((d, 5 - meal))
            drawn += circle(round(x, 1), round(y, 1), round(3.5 * math.sqrt(amount), 1), colour, fill_opacity=0.82)
    if not frame.detailed:
        return drawn
    marks = ("7:00", "12:00", "15:00", "18:00")
    drawn += "".join(frame.beside(4 - row, label) for row, label in enumerate(marks))
    return drawn + "".join(frame.below(d, label) for d, label in days(10, 1))


CHARTS = {"day": day, "trend": trend, "range": in_range, "insulin": insulin, "pressure": pressure, "weight": weight,
          "hba1c": hba1c, "stdday": standard_day, "basal": basal, "carbs": carbohydrates}


def sheet(draw, frame):
    return (gradient("below", SEA, SEA, False, 0.42, 0.04) + rect(0, 0, *SIZE, fill=SNOW)
            + raised(rect(14, 14, 772, 500, 14, WHITE), depth="flat") + draw(frame))


def screenshot(draw):
    return sheet(draw, Frame(detailed=True))


def thumbnail(draw):
    return sheet(draw, Frame(detailed=False))
