"""The pictures of the tips and of the choices about the diary's window: small drawings of its main window, the hand
that points into them, and the marks laid over them. Positions are in units of the picture.

    name           units      what it shows
    navbar0..4     320 x 240  button 0..4 of the navigation bar chosen; their middles lie at x 44, y 42 + 39.5 i
    splits0..2     320 x 240  one view; two views; the second view alone. The split button's middle belongs at y 22, on
                              the edge at x 302 (0 and 2) or on the divider at x 160 (1)
    split_button    16 x  16
    stats0..3      320 x 240  the statistics window on its way, the hand holding it at HELD
    diary          320 x 240  the diary without its side bar
    sidebar        320 x 240  the diary with it
    sidebar_mark    80 x 240  mark over the side bar, the left quarter of "sidebar"
    start0..2      320 x 240  the diary with its start page, with the list of patients, with the view that was open last
    start_mark     240 x 200  mark over the start page, the part of "start0" from 80, 40 on
    entry0..2      320 x 240  entry in a window with all details, in a table, on the sheet of a day
    style0..1      320 x 240  plain window, window with a navigation pane
    hand            32 x  32  hand cursor, its finger tip at 11, 3
    new, open       32 x  32  a new shared folder, an existing one
"""

from svg import (AMBER, BLUE, CORAL, DEEP, GREEN, INK, LINE, MIST, PALE, SEA, SNOW, TEAL, WHITE, at, circle, clipped,
                 drop, gradient, line, path, raised, rect, smooth, stroke)

WIDTH, HEIGHT = 320, 240
LEFT, UPPER = 8, 3  # of the window inside the picture, leaving room for its shadow
INNER_WIDTH, INNER_HEIGHT = WIDTH - 2 * LEFT, HEIGHT - 11
HELD = [(67, 30), (110, 52), (154, 74), (181, 79)]
BAR = 22  # lower edge of the title bar
HEAD = 38  # lower edge of a view's own head
EDGE, DIVIDER = 302 - LEFT, 160 - LEFT
SIDE = 72  # width of the side bar


def titlebar():
    width = INNER_WIDTH
    return (path(f"M0 8A8 8 0 0 1 8 0H{width - 8}A8 8 0 0 1 {width} 8V{BAR}H0Z", DEEP) + drop(13, 11, 6, WHITE)
            + rect(26, 9, 62, 5, 2.5, WHITE, fill_opacity=0.55)
            + "".join(circle(width - 14 - 14 * i, 11, 3.4, WHITE, fill_opacity=0.45) for i in range(3)))


def frame(*content):
    shape = rect(0, 0, INNER_WIDTH, INNER_HEIGHT, 8, SNOW)
    return at(LEFT, UPPER, raised(clipped("frame", shape, shape, *content)))


def window(*content):
    return frame(*content, titlebar())


def icon_home(colour, _paper=WHITE):
    return path("M-9 1L0 -8L9 1V9H3V3H-3V9H-9Z", colour)


def icon_diary(colour, paper=WHITE):
    return (rect(-8, -9, 16, 18, 2.5, colour) + rect(-4, -5, 9, 2, 1, paper) + rect(-4, -1, 9, 2, 1, paper)
            + rect(-4, 3, 6, 2, 1, paper))


def icon_curve(colour, _paper=WHITE):
    return stroke("M-9 6L-4 -2L1 3L9 -7", colour, 2.8) + line(-9, 9.4, 9, 9.4, colour, 1.6)


def icon_calendar(colour, paper=WHITE):
    return (rect(-9, -7, 18, 16, 2.5, colour) + rect(-6.5, -1.5, 13, 8, 1, paper) + line(-4, -9, -4, -5, colour, 2.4)
            + line(4, -9, 4, -5, colour, 2.4) + rect(-4, 1, 3, 3, 0.6, colour) + rect(1.5, 1, 3, 3, 0.6, colour))


def icon_ring(colour, _paper=WHITE):
    return circle(0, 0, 7, "none", stroke=colour, stroke_width=4.4, stroke_dasharray="31 3 8 2")


ICONS = (icon_home, icon_diary, icon_curve, icon_calendar, icon_ring)


def navigation(chosen):
    bar = rect(0, BAR, SIDE, INNER_HEIGHT - BAR, 0, WHITE) + line(SIDE, BAR, SIDE, INNER_HEIGHT, LINE)
    for i, icon in enumerate(ICONS):
        x, y = 44 - LEFT, 42 + 39.5 * i - UPPER
        if i == chosen:
            bar += rect(6, y - 16, SIDE - 12, 32, 8, PALE) + rect(0, y - 12, 3.4, 24, 1.7, TEAL)
        bar += at(x, y, icon(TEAL if i == chosen else "#8FAEB9"), scale=1.1)
    return bar


def card(x, y, width, height, *content):
    return at(x, y, raised(rect(0, 0, width, height, 6, WHITE), depth="flat"), *content)


CURVE = ((0, 0.55), (0.12, 0.72), (0.28, 0.2), (0.42, 0.58), (0.55, 0.34), (0.7, 0.76), (0.84, 0.4), (1, 0.5))


def curve_card(x, y, width, height):
    points = [(10 + fx * (width - 20), 8 + fy * (height - 16)) for fx, fy in CURVE]
    return card(x, y, width, height, rect(6, height * 0.42, width - 12, height * 0.26, 2, GREEN, fill_opacity=0.2),
                stroke(smooth(points), TEAL, 2.4),
                "".join(circle(round(px, 1), round(py, 1), 2.8, CORAL if fy > 0.7 else AMBER if fy < 0.3 else TEAL,
                               stroke=WHITE, stroke_width=1)
                        for (px, py), (_, fy) in zip(points[1:-1], CURVE[1:-1])))


def columns_card(x, y, width, height):
    heights = (0.5, 0.62, 0.44, 0.7, 0.58, 0.8, 0.52)
    step, drawn = (width - 16) / len(heights), ""
    for i, share in enumerate(heights):
        low, high = height * 0.3, share * (height - 18)
        left = 8 + i * step + step * 0.16
        drawn += rect(round(left, 1), round(height - 8 - high, 1), round(step * 0.66, 1), round(high, 1), 1.5, SEA)
        drawn += rect(round(left, 1), round(height - 8 - low, 1), round(step * 0.66, 1), round(low, 1), 1.5, DEEP)
    return card(x, y, width, height, drawn)


def ring_card(x, y, width, height):
    radius = min(width, height) * 0.29
    turn = 2 * 3.14159 * radius
    return card(x, y, width, height, at(width / 2, height / 2, *(
        circle(0, 0, round(radius, 1), "none", stroke=colour, stroke_width=round(radius * 0.55, 1),
               stroke_dasharray=f"{share * turn - 1.5:.1f} {turn:.1f}", stroke_dashoffset=f"{-start * turn:.1f}")
        for share, start, colour in ((0.68, 0, GREEN), (0.22, 0.68, AMBER), (0.1, 0.9, CORAL))), turn=-90))


def table_card(x, y, width, height, columns=5):
    rows, step = int((height - 18) // 14), (width - 12) / columns
    drawn = path(f"M0 6A6 6 0 0 1 6 0H{width - 6}A6 6 0 0 1 {width} 6V14H0Z", TEAL)
    drawn += "".join(rect(round(8 + c * step, 1), 5, round(step * 0.6, 1), 4, 2, WHITE, fill_opacity=0.8)
                     for c in range(columns))
    for row in range(rows):
        top = 20 + row * 14
        drawn += line(6, top + 9.5, width - 6, top + 9.5, PALE, 1)
        for column in range(columns):
            if (row * 3 + column * 2) % 7 == 5:
                continue
            colour = MIST if column else SEA
            if column == 2 and row % 4 == 1:
                colour = AMBER
            share = 0.42 + 0.1 * ((row + column) % 3)
            drawn += rect(round(8 + column * step, 1), top, round(step * share, 1), 4, 2, colour)
    return card(x, y, width, height, drawn)


def calendar_card(x, y, width, height):
    step, rise, drawn = (width - 16) / 7, (height - 16) / 5, ""
    for row in range(5):
        for column in range(7):
            number = row * 7 + column
            colour = TEAL if number == 17 else (GREEN if number % 3 == 0 else AMBER if number % 8 == 5 else PALE)
            drawn += rect(round(8 + column * step + 1.5, 1), round(8 + row * rise + 1.5, 1), round(step - 3, 1),
                          round(rise - 3, 1), 2.5, colour, fill_opacity=1 if number == 17 else 0.55)
    return card(x, y, width, height, drawn)


def views(number, x, y, width, height):
    """The content of the main window for a button of the navigation bar."""
    half = (width - 8) / 2
    if number == 0:
        return (curve_card(x, y, width, height * 0.5 - 4) + ring_card(x, y + height * 0.5 + 4, half, height * 0.5 - 4)
                + columns_card(x + half + 8, y + height * 0.5 + 4, half, height * 0.5 - 4))
    return (None, table_card, curve_card, calendar_card, columns_card)[number](x, y, width, height)


def navbar(number):
    width, height = INNER_WIDTH - SIDE - 20, INNER_HEIGHT - BAR - 20
    return lambda: window(navigation(number), views(number, SIDE + 10, BAR + 10, width, height))


def view(draw, icon, left, right):
    """A view with a head of its own; the split button takes the right end of the head."""
    head = rect(left, 0, right - left, HEAD, 0, DEEP)
    start = left + (34 if left else 20)
    head += at(start, HEAD / 2, icon(WHITE, DEEP), scale=0.9)
    head += rect(start + 16, HEAD / 2 - 3, 50, 6, 3, WHITE, fill_opacity=0.55)
    return head + draw(left + 10, HEAD + 10, right - left - 20, INNER_HEIGHT - HEAD - 20)


def split_window(number):
    def table(*place):
        return table_card(*place, columns=3 if number == 1 else 5)

    def first(right):
        return view(table, icon_diary, 0, right)

    def second(left):
        return view(curve_card, icon_curve, left, INNER_WIDTH)

    def draw():
        if number == 1:
            return frame(first(DIVIDER), second(DIVIDER), line(DIVIDER, 0, DIVIDER, INNER_HEIGHT, SEA, 3))
        return frame(first(INNER_WIDTH) if number == 0 else second(0))

    return draw


def split_button():
    return (rect(0.8, 0.8, 14.4, 14.4, 4, WHITE, stroke=TEAL, stroke_width=1.6) + line(8, 4, 8, 12, TEAL, 1.6)
            + stroke("M5.4 6L3.4 8L5.4 10M10.6 6L12.6 8L10.6 10", TEAL, 1.4))


def statistics_window(number):
    shares = ((66, GREEN), (42, AMBER), (20, CORAL)) if number < 3 else ((80, GREEN), (30, AMBER), (12, CORAL))

    def place(step):
        return HELD[step][0] - 24 - LEFT, HELD[step][1] - 9 - UPPER

    def draw():
        rows = "".join(rect(10, 27 + i * 14, 94, 7, 3.5, PALE) + rect(10, 27 + i * 14, share, 7, 3.5, colour)
                       for i, (share, colour) in enumerate(shares))
        dialog = (rect(0, 0, 114, 76, 7, WHITE, stroke=BLUE, stroke_width=1.4)
                  + path("M0 7A7 7 0 0 1 7 0H107A7 7 0 0 1 114 7V18H0Z", BLUE)
                  + rect(40, 6.5, 44, 5, 2.5, WHITE, fill_opacity=0.85)
                  + circle(104, 9, 3, WHITE, fill_opacity=0.7) + rows)
        left_behind = rect(*place(0), 114, 76, 7, "none", stroke="#8FAEB9", stroke_width=1.2, stroke_dasharray="4 4")
        table = table_card(10, BAR + 10, INNER_WIDTH - 20, INNER_HEIGHT - BAR - 20)
        return window(table) + at(LEFT, UPPER, left_behind if number else "", at(*place(number), raised(dialog)))

    return draw


def side_bar(chosen=0):
    bar = gradient("bar", TEAL, DEEP) + rect(0, BAR, SIDE, INNER_HEIGHT - BAR, 0, "url(#bar)")
    for i, icon in enumerate(ICONS):
        y = 46 + i * 38
        if i == chosen:
            bar += rect(5, y - 16, SIDE - 10, 32, 7, WHITE, fill_opacity=0.18)
        bar += at(20, y, icon(WHITE, TEAL), scale=0.8)
        bar += rect(35, y - 2.5, 28 - i % 3 * 7, 5, 2.5, WHITE, fill_opacity=0.75)
    return bar


def diary():
    return window(table_card(10, BAR + 10, INNER_WIDTH - 20, INNER_HEIGHT - BAR - 20))


def diary_with_side_bar():
    width, height = INNER_WIDTH - SIDE - 20, INNER_HEIGHT - BAR - 20
    return window(side_bar(1), table_card(SIDE + 10, BAR + 10, width, height, 4))


def start_page():
    width, height = INNER_WIDTH - SIDE - 20, INNER_HEIGHT - BAR - 34
    return window(side_bar(0), tools(SIDE, 14), views(0, SIDE + 10, BAR + 24, width, height))


def person(x, y, colour):
    return circle(x, y - 4, 4, colour) + path(f"M{x - 7} {y + 8}A7 7 0 0 1 {x + 7} {y + 8}Z", colour)


def patient_list():
    """The start with a list of the patients."""
    left, width, drawn = SIDE + 10, INNER_WIDTH - SIDE - 20, ""
    for i in range(4):
        top = BAR + 24 + i * 41
        drawn += card(left, top, width, 35, person(18, 17, TEAL if i == 1 else "#8FAEB9"),
                      rect(36, 9, 74 - 9 * (i % 3), 6, 3, DEEP if i == 1 else SEA), rect(36, 20, 52 + 8 * (i % 2), 4, 2, MIST),
                      circle(width - 20, 17.5, 5, (GREEN, GREEN, AMBER, CORAL)[i]))
    return window(side_bar(0), tools(SIDE, 14), drawn)


def last_view():
    """The start with what was open last: the table and its newest entry."""
    left, width, height = SIDE + 10, INNER_WIDTH - SIDE - 20, INNER_HEIGHT - BAR - 34
    top = BAR + 24
    return window(side_bar(1), tools(SIDE, 14), table_card(left, top, width, height, 4),
                  rect(left + 4, top + 86, width - 8, 15, 3, AMBER, fill_opacity=0.22, stroke=AMBER, stroke_width=1.4))


def entry_window():
    """One value with all its details: a dialog with a field each."""
    rows = "".join(rect(14, 34 + i * 25, 40 - 6 * (i % 2), 5, 2.5, SEA)
                   + rect(66, 28 + i * 25, 92 if i != 1 else 60, 17, 3, WHITE, stroke=TEAL if i == 0 else LINE, stroke_width=1.4)
                   + rect(72, 34 + i * 25, 36 - 7 * (i % 3), 5, 2.5, DEEP if i == 0 else MIST) for i in range(4))
    buttons = rect(66, 134, 42, 16, 4, TEAL) + rect(78, 140, 18, 4, 2, WHITE) + rect(116, 134, 42, 16, 4, PALE)
    dialog = (rect(0, 0, 174, 160, 7, WHITE) + path("M0 7A7 7 0 0 1 7 0H167A7 7 0 0 1 174 7V18H0Z", BLUE)
              + rect(12, 6.5, 60, 5, 2.5, WHITE, fill_opacity=0.85) + rows + buttons)
    return window(table_card(10, BAR + 10, INNER_WIDTH - 20, INNER_HEIGHT - BAR - 20), at(65, 42, raised(dialog)))


def entry_table():
    """Values below each other: a table whose next row is open."""
    left, top, width, height = 10, BAR + 10, INNER_WIDTH - 20, INNER_HEIGHT - BAR - 20
    step = (width - 12) / 5
    cells = "".join(rect(left + 6 + i * step + 1, top + 84, step - 2, 17, 2.5, WHITE, stroke=TEAL if i == 2 else LINE,
                         stroke_width=2 if i == 2 else 1.2) for i in range(5))
    typed = "".join(rect(left + 12 + i * step, top + 90.5, step * 0.5, 4, 2, DEEP) for i in range(2))
    caret = line(left + 12 + 2 * step, top + 87.5, left + 12 + 2 * step, top + 97.5, INK, 1.6)
    return window(table_card(left, top, width, height),
                  rect(left + 3, top + 80, width - 6, 25, 4, PALE), cells, typed, caret)


def entry_day():
    """A day on one sheet, as in a diary of paper: times across, kinds of values down."""
    left, top, width, height = 40, BAR + 10, INNER_WIDTH - 80, INNER_HEIGHT - BAR - 20
    drawn = rect(14, 10, 70, 6, 3, DEEP) + line(14, 24, width - 14, 24, TEAL, 1.6)
    step, rise = (width - 60) / 6, (height - 44) / 5
    for row in range(5):
        y = 32 + row * rise
        drawn += rect(14, round(y + rise / 2 - 2.5, 1), 22 - row % 2 * 5, 5, 2.5, SEA)
        drawn += line(14, round(y + rise, 1), width - 14, round(y + rise, 1), LINE, 1)
        for column in range(6):
            if (row * 2 + column * 3) % 5 < 3:
                drawn += rect(round(48 + column * step + step * 0.2, 1), round(y + rise / 2 - 3, 1), round(step * 0.5, 1), 6, 3,
                              (TEAL, AMBER, GREEN, MIST, SEA)[row])
    drawn += "".join(line(round(48 + i * step, 1), 24, round(48 + i * step, 1), height - 12, LINE, 1) for i in range(6))
    binding = "".join(circle(6, 14 + i * 20, 2.4, SNOW) for i in range(9))
    return window(card(left, top, width, height, drawn, rect(0, 0, 11, height, 6, SEA), binding))


def mark(x, y, width, height):
    """A frame within a place of the mark's own picture."""
    shape = (x + 3, y + 3, width - 6, height - 6, 7)
    return lambda: (rect(*shape, AMBER, fill_opacity=0.16, stroke=WHITE, stroke_width=6)
                    + rect(*shape, "none", stroke=AMBER, stroke_width=3.6))


def tools(left, height):
    strip = rect(left, BAR, INNER_WIDTH - left, height, 0, WHITE) + line(left, BAR + height, INNER_WIDTH, BAR + height)
    for i in range((INNER_WIDTH - left) // 36):
        strip += rect(left + 12 + i * 24, BAR + height / 4, height * 0.6, height / 2, 2.5, MIST if i % 3 else SEA)
    return strip


def plain_style():
    return window(tools(0, 24), table_card(10, BAR + 34, INNER_WIDTH - 20, INNER_HEIGHT - BAR - 44))


def pane_style():
    width = INNER_WIDTH - SIDE
    return window(tools(SIDE, 24), side_bar(1), table_card(SIDE + 10, BAR + 34, width - 20, INNER_HEIGHT - BAR - 44, 4))


def hand():
    outline = ("M9 16V4.6A2.3 2.3 0 0 1 13.6 4.6V12.2A2.1 2.1 0 0 1 17.8 12.6V13.2A2.1 2.1 0 0 1 21.9 13.8V14.6"
               "A2 2 0 0 1 25.8 15.2V21C25.8 26 23 29 18.4 29H16.6C13.4 29 11.6 27.8 10 25.2L5.6 18.8"
               "A2.2 2.2 0 0 1 9 16Z")
    fingers = ((17.8, 14, 18), (21.9, 15, 18.4), (13.6, 12.6, 17.4))
    return raised(path(outline, WHITE, stroke=INK, stroke_width=1.7, stroke_linejoin="round"),
                  *(line(x, y1, x, y2, INK, 1.1) for x, y1, y2 in fingers), depth="flat")


def folder(colour, sign):
    back = "M2 8A2.6 2.6 0 0 1 4.6 5.4H11L14 8.6H26A2.6 2.6 0 0 1 28.6 11.2V25A2 2 0 0 1 26.6 27H4A2 2 0 0 1 2 25Z"
    front = "M2 14H29.4L27.6 25.2A2.2 2.2 0 0 1 25.4 27H4A2 2 0 0 1 2 25Z"
    sheet = rect(5, 10.5, 20, 9, 1.2, WHITE)
    return (gradient("back", "#D99A2E", "#C98A20") + gradient("front", "#F8CF7C", AMBER)
            + raised(path(back, "url(#back)"), sheet, path(front, "url(#front)"), depth="flat")
            + circle(24, 23, 6.8, WHITE) + circle(24, 23, 5.7, colour) + stroke(sign, WHITE, 1.8))


def new_folder():
    return folder(GREEN, "M24 20V26M21 23H27")


def open_folder():
    return folder(TEAL, "M21.2 23H26.6M24.4 20.6L26.8 23L24.4 25.4")


def pictures():
    for i in range(5):
        yield f"navbar{i}", navbar(i), WIDTH, HEIGHT
    for i in range(3):
        yield f"splits{i}", split_window(i), WIDTH, HEIGHT
    for i in range(4):
        yield f"stats{i}", statistics_window(i), WIDTH, HEIGHT
    yield "split_button", split_button, 16, 16
    yield "diary", diary, WIDTH, HEIGHT
    yield "sidebar", diary_with_side_bar, WIDTH, HEIGHT
    yield "sidebar_mark", mark(LEFT, UPPER + BAR, SIDE, INNER_HEIGHT - BAR), SIDE + LEFT, HEIGHT
    yield "start0", start_page, WIDTH, HEIGHT
    yield "start1", patient_list, WIDTH, HEIGHT
    yield "start2", last_view, WIDTH, HEIGHT
    yield "entry0", entry_window, WIDTH, HEIGHT
    yield "entry1", entry_table, WIDTH, HEIGHT
    yield "entry2", entry_day, WIDTH, HEIGHT
    yield "start_mark", mark(0, 0, WIDTH - LEFT - 80, UPPER + INNER_HEIGHT - 40), 240, 200
    yield "style0", plain_style, WIDTH, HEIGHT
    yield "style1", pane_style, WIDTH, HEIGHT
    yield "hand", hand, 32, 32
    yield "new", new_folder, 32, 32
    yield "open", open_folder, 32, 32


PICTURES = {name: (draw, width, height) for name, draw, width, height in pictures()}
