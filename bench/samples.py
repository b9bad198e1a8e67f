# SPDX-License-Identifier: MIT
"""The files that bench/table measures with: four kinds, of any number of points."""
import os
import random

HEAD = ('<?xml version="1.0" encoding="UTF-8"?>\n<gpx version="1.1" creator="bench" '
        'xmlns="http://www.topografix.com/GPX/1/1">\n')
ROUTE_POINTS = 20
WORDS = ('the path leads over a narrow bridge to an old mill and then up through beech forest until the pass with '
         'water from spring in summer closed after heavy snow parking 300 m east of Bühl, bus 12 every hour; key at '
         'farm Müller &amp; Söhne, view &lt;best&gt; toward Säntis 2502 m').split()
SYMBOLS = ('Flag, Blue', 'Parking Area', 'Summit', 'Restaurant', 'Drinking Water', 'Campground', 'Bridge')


def sentences(count):
    chance = random.Random(1)
    return [' '.join(chance.choices(WORDS, k=chance.randint(2, 24))) for _ in range(count)]


def position(i):
    return 'lat="%.7f" lon="%.7f"' % (46 + (i * 7 % 100000) * 1e-5, 7 + (i * 13 % 100000) * 1e-5)


def time_text(i):
    return '2012-03-%02dT%02d:%02d:%02dZ' % (1 + i // 86400 % 28, i // 3600 % 24, i // 60 % 60, i % 60)


def numbers(i):
    return '<ele>%.1f</ele><time>%s</time>' % (400 + i % 3000 / 10, time_text(i))


def point(element, i):
    return '<%s %s>%s</%s>\n' % (element, position(i), numbers(i), element)


def track(count):
    yield '<trk><name>T</name>'
    for start in range(0, count, 10000):
        yield '<trkseg>\n'
        for i in range(start, min(start + 10000, count)):
            yield point('trkpt', i)
        yield '</trkseg>\n'
    yield '</trk>'


def waypoints(count):
    texts = sentences(997)
    for i in range(count):
        comment = '<cmt>%s</cmt>' % texts[i % 991] if i % 3 == 0 else ''
        link = '<link href="https://example.org/places/%d"><text>%s</text></link>' % (i, texts[i % 983])
        yield '<wpt %s>%s<name>%s %d</name>%s<desc>%s</desc>%s<sym>%s</sym></wpt>\n' % (
            position(i), numbers(i), WORDS[i % len(WORDS)], i, comment, texts[i % 997],
            link if i % 2 == 0 else '', SYMBOLS[i % len(SYMBOLS)])


def routes(count):
    for start in range(0, count, ROUTE_POINTS):
        yield '<rte><name>R%d</name>' % start
        for i in range(start, min(start + ROUTE_POINTS, count)):
            yield point('rtept', i)
        yield '</rte>\n'


def geocaches(count):
    space = 'xmlns:groundspeak="http://www.groundspeak.com/cache/1/0/1"'
    text = '&lt;p&gt;A &lt;b&gt;cache&lt;/b&gt; by the river, park at the bridge.&lt;/p&gt; ' * 10
    for i in range(count):
        yield ('<wpt %s><name>GC%05X</name><extensions><groundspeak:cache %s><groundspeak:name>Cache %d'
               '</groundspeak:name><groundspeak:long_description>%s</groundspeak:long_description><groundspeak:logs>'
               '<groundspeak:log id="%d"><groundspeak:date>2012-03-14</groundspeak:date><groundspeak:finder>someone'
               '</groundspeak:finder><groundspeak:text>Found &amp; signed</groundspeak:text></groundspeak:log>'
               '</groundspeak:logs></groundspeak:cache></extensions></wpt>\n' % (position(i), i, space, i, text, i))


KINDS = {'track points': track, 'waypoints': waypoints, 'route points': routes, 'geocaches': geocaches}


def make(folder, kind, count):
    """The path of a file with so many of the kind, which is made when it is not there yet."""
    path = os.path.join(folder, '%s-%d.gpx' % (kind.replace(' ', '-'), count))
    if not os.path.exists(path):
        with open(path, 'w', encoding='utf-8', buffering=1 << 20) as file:
            file.write(HEAD)
            file.writelines(KINDS[kind](count))
            file.write('</gpx>\n')
    return path
