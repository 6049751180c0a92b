#!/usr/bin/env python3
"""Lays rendered PNGs out on one sheet, to review the artwork side by side.

  python3 resources/contact_sheet.py OUT.png DIR [DIR...] [--cell N] [--columns N]
                                     [--background #rrggbb] [--device-scale S]

Every PNG under the given folders is drawn into a cell of N points (default
96), with its name under it, on a dark backdrop like the blur the images are
shown on. Images are fitted to the cell; with --device-scale S each is drawn
at its point size (a third of its pixels) on a screen of scale S instead, as a
phone would show it, and only shrunk when larger than the cell. Needs
rsvg-convert; only the standard library otherwise.
"""

import base64
import html
import pathlib
import re
import struct
import subprocess
import sys


def png_size(data):
    if data[:8] != b"\x89PNG\r\n\x1a\n":
        raise ValueError("not a PNG")
    return struct.unpack(">II", data[16:24])


def natural_order(path):
    """Orders Battery9 before Battery10, as a person would."""
    return [int(part) if part.isdigit() else part for part in re.split(r"(\d+)", str(path))]


def main(argv):
    args = argv[1:]
    cell, columns, background, device_scale = 96, 8, "#1f2430", None
    folders = []
    while args:
        arg = args.pop(0)
        if arg == "--cell":
            cell = int(args.pop(0))
        elif arg == "--columns":
            columns = int(args.pop(0))
        elif arg == "--background":
            background = args.pop(0)
        elif arg == "--device-scale":
            device_scale = float(args.pop(0))
        else:
            folders.append(arg)
    if len(folders) < 2:
        print(__doc__, file=sys.stderr)
        return 2
    out, *folders = folders

    images = []
    for folder in folders:
        root = pathlib.Path(folder)
        for path in sorted(root.rglob("*.png"), key=natural_order):
            images.append((str(path.relative_to(root).with_suffix("")), path.read_bytes()))
    if not images:
        print("no PNGs found", file=sys.stderr)
        return 1

    pad, label = 12, 14
    pitch_x, pitch_y = cell + pad * 2, cell + pad * 2 + label
    rows = (len(images) + columns - 1) // columns
    width, height = columns * pitch_x, rows * pitch_y
    parts = [
        f'<svg xmlns="http://www.w3.org/2000/svg" xmlns:xlink="http://www.w3.org/1999/xlink" '
        f'width="{width * 2}" height="{height * 2}" viewBox="0 0 {width} {height}">',
        f'<rect width="{width}" height="{height}" fill="{background}"/>',
    ]
    for index, (name, data) in enumerate(images):
        w, h = png_size(data)
        fit = min(cell / w, cell / h)
        if device_scale:
            # The sheet itself is rendered at 2x: half a sheet unit is a pixel.
            fit = min(fit, device_scale / 3 / 2)
        dw, dh = w * fit, h * fit
        x = (index % columns) * pitch_x + pad + (cell - dw) / 2
        y = (index // columns) * pitch_y + pad + (cell - dh) / 2
        href = "data:image/png;base64," + base64.b64encode(data).decode()
        parts.append(
            f'<rect x="{x:.1f}" y="{y:.1f}" width="{dw:.1f}" height="{dh:.1f}" fill="none" '
            'stroke="#ffffff" stroke-opacity="0.08" stroke-width="0.5"/>'
        )
        parts.append(f'<image x="{x:.1f}" y="{y:.1f}" width="{dw:.1f}" height="{dh:.1f}" xlink:href="{href}"/>')
        tx = (index % columns) * pitch_x + pitch_x / 2
        ty = (index // columns) * pitch_y + pad * 2 + cell + 6
        parts.append(
            f'<text x="{tx:.1f}" y="{ty:.1f}" font-family="Inter" font-size="8" fill="#ffffff" '
            f'fill-opacity="0.6" text-anchor="middle">{html.escape(name)}</text>'
        )
    parts.append("</svg>")
    sheet = pathlib.Path(out).with_suffix(".svg")
    sheet.write_text("\n".join(parts))
    subprocess.run(["rsvg-convert", "-o", out, str(sheet)], check=True)
    sheet.unlink()
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
