"""Draws two centred lines with FreeType alone and writes the frame as the panel receives it.

Usage: draw_two_lines.py FONT LINE1 LINE2 > frame

An independent witness: it shares nothing with the C++ code. The frame is 160 x 48 pixels of RGB 5-6-5, most significant
byte first, turned by 180 degrees because the panel is mounted upside down.
"""

import os
import sys

import freetype

WIDTH, HEIGHT = 160, 48
POINTS = 14
WHITE = (255 >> 3, 255 >> 2, 255 >> 3)
OPAQUE = 128
LINE_BREAK = 10
ICONS = range(1, 10)  # no icon is set, so they draw nothing and advance by nothing


class Canvas:
    """An opaque black frame."""

    def __init__(self):
        self.pixels = [(0, 0, 0)] * (WIDTH * HEIGHT)

    def blend(self, x, y, grey):
        if grey == 0 or not (0 <= x < WIDTH and 0 <= y < HEIGHT):
            return
        alpha = OPAQUE * (1 + grey) >> 8
        old = self.pixels[y * WIDTH + x]
        self.pixels[y * WIDTH + x] = tuple(
            (old[c] * (OPAQUE - alpha) + WHITE[c] * alpha) // OPAQUE for c in range(3))

    def as_panel_bytes(self):
        words = [r << 11 | g << 5 | b for r, g, b in reversed(self.pixels)]
        return b"".join(word.to_bytes(2, "big") for word in words)


class Pen:
    """Draws bytes as character codes with one face at one size."""

    def __init__(self, font):
        self.face = freetype.Face(font)
        self.face.set_char_size(0, POINTS * 64, 100, 100)
        self.face.load_glyph(self.face.get_char_index(ord("M")))
        self.cap_height = -(-self.face.glyph.outline.get_cbox().yMax // 64)  # 26.6, rounded up to whole pixels

    def load(self, code):
        self.face.load_glyph(self.face.get_char_index(code))
        return self.face.glyph

    def measure(self, text):
        widths = [sum(self.load(code).advance.x >> 6 for code in line if code not in ICONS)
                  for line in text.split(bytes([LINE_BREAK]))]
        return max(widths), self.cap_height + POINTS * (len(widths) - 1)

    def draw(self, canvas, text, x, y):
        left = max(x, 0)
        baseline = y + self.cap_height
        for code in text:
            if code == LINE_BREAK:
                baseline += POINTS
                x = left
            elif code not in ICONS:
                slot = self.load(code)
                advance = slot.advance.x // 64
                freetype.FT_Render_Glyph(slot._FT_GlyphSlot, freetype.FT_RENDER_MODE_NORMAL)
                self.stamp(canvas, slot, x, baseline)
                x += advance

    @staticmethod
    def stamp(canvas, slot, x, baseline):
        bitmap = slot.bitmap
        grey = bitmap.buffer
        for row in range(bitmap.rows):
            for column in range(bitmap.width):
                canvas.blend(x + slot.bitmap_left + column, baseline - slot.bitmap_top + row,
                             grey[row * bitmap.pitch + column])

    def draw_centred(self, canvas, text, x, y):
        if text:
            width, height = self.measure(text)
            self.draw(canvas, text, x - width // 2, y - height // 2)


def main():
    font, line1, line2 = sys.argv[1:]
    pen, canvas = Pen(font), Canvas()
    pen.draw_centred(canvas, os.fsencode(line1), WIDTH // 2, HEIGHT // 2 - 7)
    pen.draw_centred(canvas, os.fsencode(line2), WIDTH // 2, HEIGHT // 2 + 7)
    sys.stdout.buffer.write(canvas.as_panel_bytes())


if __name__ == "__main__":
    main()
