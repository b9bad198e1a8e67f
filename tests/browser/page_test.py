#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Tests the page of `vexagpx plot` in a headless Chromium.

    tests/browser/page_test.py TOOL [NAME...]
"""

import math
import os
import re
import subprocess
import sys
import tempfile
import unittest

from browser import Browser, missing_programs

HOSTILE = '</script><script>document.title="broken"</script><img src=x onerror=alert(1)>&amp;"'


def escaped(text):
    return text.replace('&', '&amp;').replace('<', '&lt;')


def point(kind, latitude, longitude, height=None, seconds=None):
    content = '' if height is None else f'<ele>{height}</ele>'
    if seconds is not None:
        content += f'<time>2020-06-01T{10 + seconds // 3600:02}:{seconds // 60 % 60:02}:{seconds % 60:02}Z</time>'
    return f'<{kind} lat="{latitude}" lon="{longitude}">{content}</{kind}>'


def track(name, points):
    return f'<trk><name>{escaped(name)}</name><trkseg>{"".join(points)}</trkseg></trk>'


def waypoint(name, latitude, longitude):
    return f'<wpt lat="{latitude}" lon="{longitude}"><name>{escaped(name)}</name></wpt>'


def hill(count=400, pause=600):
    """About 4.4 km northwards over a hill, at 1.1 m/s, with a pause in the middle."""
    return [point('trkpt', 47 + i * 0.0001, 8 + 0.002 * math.sin(i / 40), round(500 + 200 * math.sin(i / 127), 1),
                  i * 10 + (pause if i > count / 2 else 0)) for i in range(count)]


WALK = track('Over the hill', hill()) + track(HOSTILE, hill(100)) + waypoint('Hut', 47.01, 8.003) + \
    waypoint(HOSTILE, 47.03, 7.998)

# Each has to work in the browser, and whether it has a map and a profile.
DOCUMENTS = {
    'empty': ('', False, False),
    'track-without-points': ('<trk><name>none</name></trk>', False, False),
    'single-waypoint': (waypoint('Alone', 47, 8), True, False),
    'single-point': (track('One', [point('trkpt', 47, 8, 500, 0)]), True, False),
    'standing-still': (track('Same', [point('trkpt', 47, 8, 500, i) for i in range(5)]), True, False),
    'no-heights': (track('Flat', [point('trkpt', 47 + i * 0.001, 8, None, i * 60) for i in range(50)]), True, True),
    'no-times': (track('Timeless', [point('trkpt', 47 + i * 0.001, 8, 500 + i) for i in range(50)]), True, True),
    'places-alone': (track('Bare', [point('trkpt', 47 + i * 0.001, 8) for i in range(50)]), True, False),
    'date-line': (track('Across', [point('trkpt', -17, (179.9 + i * 0.01 + 180) % 360 - 180, i)
                                   for i in range(21)]), True, True),
    'north-pole': (track('Around', [point('trkpt', 89.99, i * 10 - 180, i) for i in range(37)]), True, True),
    'around-the-world': (track('Equator', [point('trkpt', 0, i * 10 - 180, i) for i in range(37)]), True, True),
    'times-backwards': (track('Back', [point('trkpt', 47 + i * 0.001, 8, 500, 3000 - i * 60) for i in range(50)]),
                        True, True),
}


def luminance(colour):
    channels = [int(part) / 255 for part in re.findall(r'\d+', colour)[:3]]
    red, green, blue = [part / 12.92 if part <= 0.04045 else ((part + 0.055) / 1.055) ** 2.4 for part in channels]
    return 0.2126 * red + 0.7152 * green + 0.0722 * blue


def contrast(colour, other):
    low, high = sorted([luminance(colour), luminance(other)])
    return (high + 0.05) / (low + 0.05)


class PageTest(unittest.TestCase):
    tool = None
    browser = None

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name
        self.browser.set_size(1200, 900)
        self.browser.set_media(prefers_color_scheme='light')
        self.browser.log('browser')
        self.browser.requests()

    def tearDown(self):
        self.assertEqual([entry['message'] for entry in self.browser.log('browser')], [])
        asked = [url for url in self.browser.requests() if not url.startswith(('file:', 'data:'))]
        self.assertEqual(asked, [])

    def open(self, *documents):
        files = []
        for number, document in enumerate(documents):
            files.append(os.path.join(self.folder, f'walk{number}.gpx'))
            with open(files[-1], 'w', encoding='utf-8') as file:
                file.write('<gpx xmlns="http://www.topografix.com/GPX/1/1" version="1.1" creator="test">'
                           + document + '</gpx>')
        page = os.path.join(self.folder, 'walk.html')
        subprocess.run([self.tool, 'plot', *files, '-o', page], check=True)
        self.browser.open(page)

    def text(self, selector):
        return self.browser.run('return document.querySelector(arguments[0]).innerText;', selector)

    def is_shown(self, selector):
        return self.browser.run('const e = document.querySelector(arguments[0]);'
                                'return e !== null && e.getClientRects().length > 0;', selector)

    def colour(self, selector, name):
        return self.browser.run('return getComputedStyle(document.querySelector(arguments[0]))[arguments[1]];',
                                selector, name)

    def choose(self, select, value):
        self.browser.run('const e = document.getElementById(arguments[0]); e.value = arguments[1];'
                         'e.dispatchEvent(new Event("change"));', select, str(value))

    def mark(self):
        return self.browser.run('const e = document.getElementById("map-mark");'
                                'return [Number(e.getAttribute("cx")), Number(e.getAttribute("cy"))];')

    def reading(self, label):
        found = re.search(label + r'\n([^\n]*)', self.text('#readout'))
        return found.group(1) if found else None

    def metres(self):
        number, unit = self.reading('Distance').split()
        return float(number) * (1000 if unit == 'km' else 1)

    def names_on_map(self):
        return self.browser.run('return Array.from(document.querySelectorAll("#map .name"), e => e.textContent);')

    def test_pointer_on_the_profile_shows_place_and_values(self):
        self.open(WALK)
        seen = []
        for part in (0.25, 0.5, 0.75):
            self.browser.move_pointer('#profile', part, 0.5)
            seen.append((self.metres(), self.mark()))
        self.assertTrue(900 < seen[0][0] < 1300, seen)
        self.assertTrue(2000 < seen[1][0] < 2500, seen)
        self.assertTrue(3000 < seen[2][0] < 3700, seen)
        self.assertTrue(seen[0][1][1] > seen[1][1][1] + 50 > seen[2][1][1] + 100, seen)
        self.assertRegex(self.reading('Height'), r'^\d+ m$')
        self.assertRegex(self.reading('Time'), r'^2020-06-01 1\d:\d\d:\d\d UTC$')
        self.assertTrue(3 < float(self.reading('Speed').split()[0]) < 5)

    def test_touch_on_the_profile_shows_the_place(self):
        self.open(WALK)
        self.browser.tap('#profile', 0.6, 0.5)
        self.assertTrue(2200 < self.metres() < 3000, self.metres())

    def test_pointer_on_the_map_shows_the_values(self):
        self.open(WALK)
        self.browser.move_pointer('#profile', 0.5, 0.5)
        width, height = self.browser.run('const r = document.getElementById("map").getBoundingClientRect();'
                                         'return [r.width, r.height];')
        x, y = self.mark()
        wanted = self.metres()
        self.browser.move_pointer('#profile', 0.9, 0.5)
        self.browser.move_pointer('#map', x / width, y / height)
        self.assertAlmostEqual(self.metres(), wanted, delta=200)

    def test_keys_move_along_the_profile(self):
        self.open(WALK)
        self.browser.run('document.getElementById("profile").focus();')
        start = self.mark()
        self.assertEqual(self.metres(), 0)
        self.browser.press('ArrowRight')
        small = self.metres()
        self.assertTrue(10 < small < 50, small)
        self.assertNotEqual(self.mark(), start)
        self.browser.press('PageUp')
        self.assertTrue(400 < self.metres() - small < 550, self.metres())
        self.browser.press('PageDown', 'ArrowLeft')
        self.assertLess(self.metres(), 5)
        self.browser.press('End')
        end = self.metres()
        self.assertTrue(4400 < end < 5000, end)
        self.browser.press('ArrowRight', 'PageUp')
        self.assertEqual(self.metres(), end)
        self.browser.press('Home')
        self.assertEqual(self.metres(), 0)
        self.assertEqual(self.mark(), start)

    def test_keys_cross_gaps_between_segments(self):
        segments = ''.join('<trkseg>' + ''.join(point('trkpt', 47 + s * 0.1 + i * 0.0001, 8, 500) for i in range(3))
                           + '</trkseg>' for s in range(4))
        self.open(f'<trk>{segments}</trk>')
        self.browser.run('document.getElementById("profile").focus();')
        for _ in range(300):
            self.browser.press('ArrowRight')
        last = self.metres()
        self.browser.press('End')
        self.assertEqual(self.metres(), last)

    def test_a_screen_reader_hears_the_values(self):
        self.open(WALK)
        self.assertEqual(self.browser.run('return document.getElementById("announcement").ariaLive;'), 'polite')
        self.browser.run('document.getElementById("profile").focus();')
        self.browser.press('PageUp')
        heard = self.browser.run('return new Promise(done => setTimeout(() => '
                                 'done(document.getElementById("announcement").textContent), 600));')
        self.assertIn('Distance ' + self.reading('Distance') + ', Height ', heard)
        self.assertIn(', Time 2020-06-01 ', heard)
        profile = self.browser.run('const e = document.getElementById("profile");'
                                   'return [e.getAttribute("role"), e.getAttribute("aria-valuetext")];')
        self.assertEqual(profile, ['slider', self.reading('Distance')])

    def test_the_profile_over_time_shows_the_pause(self):
        self.open(WALK)
        self.choose('axis', 't')
        self.assertEqual(self.text('#profile-caption'), 'Height in metres over time')
        self.browser.move_pointer('#profile', 0.5, 0.5)
        first = self.metres()
        self.browser.move_pointer('#profile', 0.54, 0.5)
        self.assertAlmostEqual(self.metres(), first, delta=30)

    def test_zoom_and_pan_of_the_map(self):
        self.open(WALK)
        place = self.mark()
        self.browser.click('#zoom-in')
        zoomed = self.mark()
        self.assertGreater(abs(zoomed[1] - 250), abs(place[1] - 250))
        self.browser.run('document.getElementById("map").focus();')
        self.browser.press('ArrowDown')
        self.assertAlmostEqual(self.mark()[1], zoomed[1] - 40, delta=0.1)
        self.browser.drag('#map', (0.5, 0.5), (0.5, 0.4))
        self.assertLess(self.mark()[1], zoomed[1] - 60)
        self.browser.press('0')
        self.assertEqual(self.mark(), place)
        self.browser.press('+', '+', '-', '-')
        self.assertAlmostEqual(self.mark()[1], place[1], delta=0.1)

    def test_another_track_is_chosen(self):
        self.open(WALK)
        self.assertTrue(self.is_shown('#path-0-0'))
        self.assertFalse(self.is_shown('#path-0-1'))
        self.choose('path', '1')
        self.assertFalse(self.is_shown('#path-0-0'))
        self.assertTrue(self.is_shown('#path-0-1'))
        self.browser.run('document.getElementById("profile").focus();')
        self.browser.press('End')
        self.assertTrue(1000 < self.metres() < 1500)

    def test_another_file_is_chosen(self):
        self.open(WALK, waypoint('Elsewhere', -40, 175))
        self.assertEqual(self.browser.run('return document.getElementById("document").options.length;'), 2)
        self.assertNotIn('Elsewhere', self.names_on_map())
        self.choose('document', '1')
        self.assertEqual(self.names_on_map(), ['Elsewhere'])
        self.assertFalse(self.is_shown('#profile'))

    def test_a_waypoint_of_the_table_is_shown_on_the_map(self):
        self.open(WALK)
        self.assertIn('Hut', self.names_on_map())
        self.browser.click('td[data-waypoint="0"] button')
        place = self.browser.run('const e = document.querySelector("#map .waypoint.chosen");'
                                 'const m = document.getElementById("map").getBoundingClientRect();'
                                 'return [e.getAttribute("cx") / m.width, e.getAttribute("cy") / m.height];')
        self.assertAlmostEqual(place[0], 0.5, delta=0.01)
        self.assertAlmostEqual(place[1], 0.5, delta=0.01)

    def test_hostile_names_are_text(self):
        self.open('<metadata><name>' + escaped(HOSTILE) + '</name></metadata>' + WALK)
        self.assertEqual(self.browser.run('return document.title;'), HOSTILE)
        self.assertEqual(self.text('h1'), HOSTILE)
        self.assertEqual(self.browser.run('return document.getElementById("path").options[1].textContent;'),
                         'Track 2: ' + HOSTILE)
        self.assertEqual(self.text('td[data-waypoint="1"]'), HOSTILE)
        self.assertEqual(self.browser.run('return document.images.length;'), 0)
        self.assertEqual(self.browser.run('return document.scripts.length;'), 2)

    def test_the_policy_stops_what_would_use_the_network(self):
        self.open(WALK)
        outcome = self.browser.run('return fetch("http://127.0.0.1:9/").then(() => "loaded", () => "refused");')
        self.assertEqual(outcome, 'refused')
        messages = [entry['message'] for entry in self.browser.log('browser')]
        self.assertTrue(any('Content Security Policy' in message for message in messages), messages)
        self.browser.requests()

    def test_a_narrow_screen_needs_no_horizontal_scrolling(self):
        long_name = 'Averylongnamewithoutanyblank' * 8
        self.browser.set_size(360, 740, mobile=True)
        self.open('<metadata><name>' + long_name + '</name></metadata>' + track(long_name, hill())
                  + track('Second', hill(50)) + waypoint(long_name, 47.01, 8), WALK)
        self.assertEqual(self.browser.run('return [document.documentElement.scrollWidth, innerWidth];'), [360, 360])
        outside = self.browser.run('return Array.from(document.querySelectorAll("body *")).filter(e => '
                                   'e.getClientRects().length > 0 && e.getBoundingClientRect().right > 360.5 && '
                                   '!(e instanceof SVGElement)).map(e => e.outerHTML.slice(0, 60));')
        self.assertEqual(outside, [])

    def test_light_and_dark_differ_and_have_contrast(self):
        grounds = set()
        for scheme in ('light', 'dark'):
            self.browser.set_media(prefers_color_scheme=scheme)
            self.open(WALK)
            page = self.colour('body', 'backgroundColor')
            ground = self.colour('#map', 'backgroundColor')
            grounds.add(page)
            for selector in ('h1', '#summary', '#keys', 'th', 'td', 'dt', 'dd', 'td button', 'select', 'label'):
                self.assertGreaterEqual(contrast(self.colour(selector, 'color'), page), 4.5, (scheme, selector))
            for selector in ('#map .name', '#map .scale text'):
                self.assertGreaterEqual(contrast(self.colour(selector, 'fill'), ground), 4.5, (scheme, selector))
            for selector in ('.line.chosen', '.line.other'):
                self.assertGreaterEqual(contrast(self.colour(selector, 'stroke'), ground), 3, (scheme, selector))
            for selector in ('.waypoint', '.mark'):
                self.assertGreaterEqual(contrast(self.colour(selector, 'fill'), ground), 3, (scheme, selector))
            self.assertGreaterEqual(contrast(self.colour('.outline', 'stroke'), page), 3, scheme)
        self.assertEqual(len(grounds), 2)

    def test_nothing_moves_by_itself(self):
        self.open(WALK)
        self.browser.press('PageUp')
        self.assertEqual(self.browser.run('return document.getAnimations().length;'), 0)

    def test_paper_shows_map_profile_and_figures_in_dark_on_light(self):
        self.browser.set_media(prefers_color_scheme='dark', media='print')
        self.open(WALK)
        for selector in ('#map', '#profile', '#path-0-0', '#readout'):
            self.assertTrue(self.is_shown(selector), selector)
        for selector in ('#controls', '#keys', '#map-buttons'):
            self.assertFalse(self.is_shown(selector), selector)
        self.assertEqual(self.colour('h1', 'color'), 'rgb(0, 0, 0)')

    def test_without_scripts_the_figures_are_there(self):
        self.browser.command('Emulation.setScriptExecutionDisabled', value=True)
        try:
            self.open(WALK)
            self.browser.command('Emulation.setScriptExecutionDisabled', value=False)
            text = self.text('body')
        finally:
            self.browser.command('Emulation.setScriptExecutionDisabled', value=False)
        self.assertIn('JavaScript is off', text)
        self.assertIn('Track 1: Over the hill', text)
        self.assertIn('Hut', text)
        self.assertFalse(self.is_shown('#map'))

    def test_every_kind_of_document_has_its_parts(self):
        for name, (document, has_map, has_profile) in DOCUMENTS.items():
            with self.subTest(name):
                self.open(document)
                self.choose('path', 0)
                self.assertEqual(self.is_shown('#map'), has_map)
                self.assertEqual(self.is_shown('#profile'), has_profile)
                self.assertNotIn('NaN', self.browser.run('return document.querySelector("main").innerHTML;'))
                self.assertEqual([entry['message'] for entry in self.browser.log('browser')], [])

    def test_a_path_across_the_date_line_is_drawn_in_one_piece(self):
        self.open(DOCUMENTS['date-line'][0])
        xs = []
        self.browser.run('document.getElementById("profile").focus();')
        for key in ('Home', 'PageUp', 'PageUp', 'PageUp', 'PageUp', 'PageUp', 'PageUp', 'End'):
            self.browser.press(key)
            xs.append(self.mark()[0])
        self.assertEqual(xs, sorted(xs))
        self.assertGreater(xs[-1] - xs[0], 800)


if __name__ == '__main__':
    missing = missing_programs()
    if missing:
        print('Skipped: the page is not tested in a browser, because there is no ' + ' and no '.join(missing))
        sys.exit(77)
    PageTest.tool = os.path.abspath(sys.argv.pop(1))
    with Browser() as PageTest.browser:
        outcome = unittest.main(exit=False)
    sys.exit(0 if outcome.result.wasSuccessful() else 1)
