#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Takes pictures of pages, for a person to look at: in light and dark, on a desktop and on a phone.

    tests/browser/look.py FOLDER PAGE...
"""

import os
import sys

from browser import Browser

WAYS = {'desktop-light': (1200, 900, 'light'), 'desktop-dark': (1200, 900, 'dark'),
        'phone-light': (360, 740, 'light'), 'phone-dark': (360, 740, 'dark')}


def main(folder, pages):
    with Browser() as browser:
        for page in pages:
            for way, (width, height, colours) in WAYS.items():
                browser.set_size(width, height, mobile=width < 500)
                browser.set_media(prefers_color_scheme=colours)
                browser.open(page)
                name = os.path.splitext(os.path.basename(page))[0]
                browser.screenshot(os.path.join(folder, name + '-' + way + '.png'))
            for entry in browser.log('browser'):
                print(page + ': ' + entry['message'])


if __name__ == '__main__':
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    main(sys.argv[1], sys.argv[2:])
