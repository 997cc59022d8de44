#!/usr/bin/env python3
"""Listings on paper: through the real dialog into PDF files, which are read back."""
import re
import subprocess

import lib
from lib import eventually, expect, expect_equal

MARGIN = 15 / 25.4 * 72  # points


def tool(*words, env=None):
    return subprocess.run([str(word) for word in words], env=env, capture_output=True, check=True,
                          timeout=lib.TIMEOUT).stdout


def pages_of(path):
    """The rows of each page, blank ones left out. The dialog has gone before the file is there."""
    eventually(f"the listing {path}", lambda: path.is_file() and path.read_bytes().startswith(b"%PDF"))
    text = tool("pdftotext", "-layout", path, "-").decode()
    return [[row for row in page.split("\n") if row.strip()] for page in text.split("\f") if page.strip()]


def listing_of(pages):
    """Line number and text of each line; a wrapped line in one, with all blanks as one."""
    lines = []
    for page in pages:
        for row in page[1:]:
            number = re.match(r" *(\d{4})(?: |$)(.*)", row)
            if number and int(number[1]) == (lines[-1][0] + 1 if lines else int(number[1])):
                lines.append((int(number[1]), number[2]))
            else:
                lines[-1] = (lines[-1][0], lines[-1][1] + " " + row)
    return [(number, " ".join(text.split())) for number, text in lines]


def expect_inside_margins(path):
    boxes = tool("pdftotext", "-bbox", path, "-").decode()
    width, height = map(float, re.search(r'<page width="([\d.]+)" height="([\d.]+)"', boxes).groups())
    words = [tuple(map(float, word)) for word in
             re.findall(r'<word xMin="([\d.-]+)" yMin="([\d.-]+)" xMax="([\d.-]+)" yMax="([\d.-]+)"', boxes)]
    expect(words, f"{path} has no words")
    left, top = min(word[0] for word in words), min(word[1] for word in words)
    right, bottom = max(word[2] for word in words), max(word[3] for word in words)
    expect(left >= MARGIN - 1 and top >= MARGIN - 3 and right <= width - MARGIN + 1 and bottom <= height - MARGIN + 3,
           f"{path}: words at {left:.0f},{top:.0f} to {right:.0f},{bottom:.0f} on a sheet of {width:.0f} by {height:.0f}")
    expect(left < MARGIN + 20, f"{path}: the text begins {left:.0f} points from the left edge")


def open_item(desktop, file="BP", item="INVOICE", **variables):
    account = desktop.sample_accounts()
    desktop.start("/A=DEMO", f"/F={file}", f"/I={item}", **variables, shows=rf"\[{file} {re.escape(item)} ")
    return account / file / item


def printed(desktop, path, title):
    """Opens the dialog, prints to the file and answers its pages."""
    desktop.keys("ctrl+p", shows=r"^Print$")
    desktop.keys("alt+f", "ctrl+a")
    desktop.type_text(str(path))
    desktop.keys("alt+p", shows=title)  # Return might go to a list of files that complete the name
    return pages_of(path)


def a_program_on_two_sizes_of_paper(desktop):
    for locale, size in (("C.UTF-8", "A4"), ("en_US.UTF-8", "letter")):
        source = open_item(desktop, LANG=locale)
        path = desktop.folder / f"{size}.pdf"
        pages = printed(desktop, path, r"INVOICE")
        info = tool("pdfinfo", path).decode()
        expect(re.search(rf"Page size: .*\({size}\)", info), f"not {size}: {info}")
        expect("BP INVOICE" in info, f"no title: {info}")
        expect_equal(len(pages), 3, "pages")
        for number, page in enumerate(pages, 1):
            expect(re.fullmatch(rf" *Page {number} +File: BP     Item: INVOICE +\S+.*", page[0]), f"header {page[0]!r}")
        want = [" ".join(line.split()) for line in source.read_text().splitlines()]
        expect_equal(listing_of(pages), list(enumerate(want, 1)), f"the text on {size}")
        expect_inside_margins(path)
        desktop.keys("ctrl+q")
        desktop.wait_no_window(r"INVOICE")


def the_preview_and_back(desktop):
    open_item(desktop)
    desktop.keys("ctrl+p", shows=r"^Print$")
    preview = desktop.keys("alt+v", shows=r"^BP INVOICE - Preview$")

    def shows_a_page():
        # White paper on grey, with black on it.
        answer = tool("convert", f"x:{preview.number}", "-colorspace", "Gray", "-depth", "8", "-format", "%c",
                      "histogram:info:-", env=desktop.env).decode()
        counts = {int(grey): int(count) for count, grey in re.findall(r"(\d+): \(\s*(\d+)[,)]", answer)}
        pixels = sum(counts.values())
        return counts.get(255, 0) > pixels / 10 and sum(counts.get(grey, 0) for grey in range(128)) > pixels / 200

    eventually("a page in the preview", shows_a_page)
    desktop.keys("Escape", shows=r"^Print$")
    desktop.keys("Escape", shows=r"\[BP INVOICE ")
    desktop.type_text("x", shows=r"\[\*BP INVOICE ")

    # The preview's own button prints what the dialog says.
    path = desktop.folder / "previewed.pdf"
    path.write_bytes(b"old")
    desktop.keys("ctrl+p", shows=r"^Print$")
    desktop.keys("alt+f", "ctrl+a")
    desktop.type_text(str(path))
    preview = desktop.keys("alt+v", shows=r"Preview$")
    preview.click(preview.size()[0] - 22, 20)
    desktop.wait_no_window(r"Preview$")
    eventually("the question whether to write over the file", lambda: len(desktop.windows(r"^Print$")) == 2)
    desktop.keys("alt+y", shows=r"INVOICE")
    expect_equal(listing_of(pages_of(path))[0][1][:10], "x* INVOICE", "the first line")


def the_results_window(desktop):
    desktop.results_in_a_window()
    open_item(desktop)
    desktop.keys("ctrl+f", shows=r"^Find")
    desktop.type_text("ORDER.ID")
    desktop.keys("alt+a", shows=r"^Results$")
    path = desktop.folder / "results.pdf"
    rows = printed(desktop, path, r"^Results$")[0]
    expect_equal(rows[0].strip(), "Search Results", "the title")
    expect_equal(rows[1].strip(), "BP INVOICE [1]", "the document")
    expect(any(re.match(r" *0042 +READU ORDER FROM F.DATA, ORDER.ID LOCKED", row) for row in rows), f"the hits: {rows}")
    expect_equal(rows[-1].strip(), "1", "the number of the page")
    expect_inside_margins(path)


if __name__ == "__main__":
    lib.run(a_program_on_two_sizes_of_paper, the_preview_and_back, the_results_window)
