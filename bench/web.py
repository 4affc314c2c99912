#!/usr/bin/env python3
"""Usage: bench/web.py

What 32 held notes of 100 modes take of a core in a browser's audio thread: rendered ahead of time in
headless Chromium, ten seconds at a time, after one for its compiler. ./check builds what it needs."""

import os
import statistics
import sys
import tempfile
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / "tests/web"))
os.environ.setdefault("ZELVATONE_WEB", str(ROOT / "build/web/bin"))

import Browser  # noqa: E402
import WorkletTest  # noqa: E402

SECONDS = 10
REPEATS = 9


def share(tab, seconds):
    tab.evaluate(f"({WorkletTest.CROWD})({seconds})")
    return tab.evaluate("page.milliseconds") / 1000 / seconds


def main():
    if Browser.CHROMIUM is None:
        sys.exit("bench/web.py: chromium is not installed")
    with tempfile.TemporaryDirectory() as folder:
        WorkletTest.makeSite(Path(folder))
        server = Browser.Server(folder)
        browser = Browser.Browser()
        tab = browser.open(server.address)
        share(tab, 1)
        shares = [100 * share(tab, SECONDS) for _ in range(REPEATS)]
        browser.close()
        server.close()
    print(f"{statistics.median(shares):.1f} % of a core, {min(shares):.1f} to {max(shares):.1f}")


if __name__ == "__main__":
    main()
