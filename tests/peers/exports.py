#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Compares what vexagpx exports with what GDAL reads from the same GPX files, value by value: positions, heights, times,
names and other texts of waypoints, routes, tracks and points. GDAL also opens what vexagpx has written.

    exports.py VEXAGPX FOLDER...

The status is 77 when GDAL is not installed. Files that GDAL refuses are counted.
"""
import csv
import datetime
import json
import os
import re
import shutil
import subprocess
import sys
import tempfile

LARGEST = 4 << 20
SECONDS = 120
SKIPPED = 77
TEXTS = ('name', 'cmt', 'desc', 'src', 'sym', 'type', 'fix')
NUMBERS = ('magvar', 'geoidheight', 'sat', 'hdop', 'vdop', 'pdop', 'ageofdgpsdata', 'dgpsid')
# GDAL writes so many decimals of a coordinate.
SMALLEST = 1e-12
# What is compared otherwise in a file, and why.
EXCEPTIONS = {
    # GDAL takes a text that is no number for 0.
    ('lossy.gpx', 'ele'),
    ('other-line-ends.gpx', 'ele'),
}


def run(command):
    """The standard output; None if the program fails."""
    done = subprocess.run(command, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                          timeout=SECONDS, check=False)
    return done.stdout.decode('utf-8', 'replace') if done.returncode == 0 else None


def features_by_gdal(path, layer):
    """None if GDAL refuses the file."""
    text = run(['ogr2ogr', '-f', 'GeoJSON', '-lco', 'COORDINATE_PRECISION=15', '/vsistdout/', path] +
               ([layer] if layer else []))
    return None if text is None else json.loads(text)['features'] if text else []


def positions_of(geometry):
    """All positions of a geometry in their order, without heights."""
    if geometry is None:
        return []
    if geometry['type'] == 'GeometryCollection':
        return [position for part in geometry['geometries'] for position in positions_of(part)]
    found = []

    def take(coordinates):
        if coordinates and isinstance(coordinates[0], (int, float)):
            found.append(tuple(coordinates[:2]))
        else:
            for part in coordinates:
                take(part)
    take(geometry['coordinates'])
    return found


def without_additions(positions):
    """Without the ends of lines that were cut at the 180th meridian, and without repeated positions: of a line of one
    point the position is there twice."""
    kept = []
    for position in positions:
        if abs(position[0]) != 180 and (not kept or kept[-1] != position):
            kept.append(position)
    return kept


def seconds_of(text):
    """Seconds since 1970; None for no time."""
    parts = re.match(r'(\d+)[-/](\d+)[-/](\d+)[T ](\d+):(\d+):(\d+(?:\.\d+)?)(Z|[-+]\d\d:?(?:\d\d)?)?$', text or '')
    if not parts:
        return None
    day = datetime.datetime(*map(int, parts.group(1, 2, 3))) - datetime.datetime(1970, 1, 1)
    zone = parts.group(7)
    minutes = 0
    if zone and zone != 'Z':
        digits = zone[1:].replace(':', '').ljust(4, '0')
        minutes = (int(digits[:2]) * 60 + int(digits[2:])) * (-1 if zone[0] == '-' else 1)
    return day.days * 86400.0 + int(parts.group(4)) * 3600 + int(parts.group(5)) * 60 + float(parts.group(6)) - minutes * 60


def words_of(text):
    return ' '.join(str(text).split()) if text is not None else ''


def is_same_number(ours, theirs):
    return abs(float(ours) - float(theirs)) <= SMALLEST * max(1.0, abs(float(theirs)))


class Comparison:
    def __init__(self, tool):
        self.tool = tool
        self.values = 0
        self.files = 0
        self.refused = 0
        self.failures = []

    def expect(self, what, is_same, ours, theirs):
        self.values += 1
        file, value = what.split(', ')[0], what.rpartition(', ')[2]
        if not is_same and (file, value) not in EXCEPTIONS:
            self.failures.append('%s: vexagpx %r, GDAL %r' % (what, ours, theirs))

    def export(self, path, out, layer=None):
        """False if the file has no such layer."""
        return run([self.tool, 'export', path, '-o', out] + (['--layer', layer] if layer else [])) is not None

    def compare(self, path, folder):
        layers = {layer: features_by_gdal(path, layer)
                  for layer in ('waypoints', 'routes', 'tracks', 'route_points', 'track_points')}
        if None in layers.values():
            self.refused += 1
            return
        self.files += 1
        for layer in ('waypoints', 'routes', 'tracks'):
            self.compare_layer(path, folder, layer, layers[layer])
        self.compare_table(path, folder, layers['route_points'] + layers['track_points'])

    def compare_layer(self, path, folder, layer, theirs):
        out = os.path.join(folder, 'out.geojson')
        ours = []
        if self.export(path, out, layer):
            with open(out, encoding='utf-8') as file:
                ours = json.load(file)['features']
        what = '%s, %s' % (os.path.basename(path), layer)
        self.expect(what, len(ours) == len(theirs), len(ours), len(theirs))
        for number, (our, their) in enumerate(zip(ours, theirs)):
            self.compare_feature('%s %d' % (what, number + 1), our, their)
        if ours:
            self.compare_again(what, out, ours)
            self.compare_kml(path, folder, layer, what, ours)

    def compare_feature(self, what, our, their):
        self.compare_positions(what, without_additions(positions_of(our['geometry'])),
                               without_additions(positions_of(their['geometry'])))
        self.compare_properties(what, our['properties'], their['properties'])
        if our['geometry'] and our['geometry']['type'] == 'Point' and 'ele' in their['properties']:
            height = (our['geometry']['coordinates'] + [None] * 2)[2]
            self.compare_number(what + ', ele', height, their['properties']['ele'])

    def compare_positions(self, what, ours, theirs):
        is_same = len(ours) == len(theirs) and all(
            is_same_number(a, b) for our, their in zip(ours, theirs) for a, b in zip(our, their))
        self.values += 2 * len(theirs)
        self.expect(what + ', positions', is_same, ours[:4], theirs[:4])

    def compare_properties(self, what, ours, theirs):
        for name in TEXTS:
            if theirs.get(name) is not None:
                self.expect(what + ', ' + name, words_of(ours.get(name)) == words_of(theirs[name]), ours.get(name),
                            theirs[name])
        for name in NUMBERS:
            if theirs.get(name) is not None:
                self.compare_number(what + ', ' + name, ours.get(name), theirs[name])
        # In a track it is an element of some other format.
        if theirs.get('time') is not None and ', tracks' not in what:
            self.compare_time(what, ours.get('time'), theirs['time'])
        # A file may have the links of both versions of GPX, of which GDAL reads one.
        ours = ours.get('links')
        links = [link.get('href') for link in ours] if isinstance(ours, list) else (ours or '').split('\n')
        addresses = [words_of(link) for link in links]
        for name, their in theirs.items():
            if re.match(r'link\d+_href$|url$', name) and their is not None:
                # In a table the text of a link follows its address.
                self.expect(what + ', link', any((address + ' ').startswith(words_of(their) + ' ')
                                                 for address in addresses), addresses, their)

    def compare_number(self, what, our, their):
        if their is not None:
            self.expect(what, our not in (None, '') and is_same_number(our, their), our, their)

    def compare_time(self, what, our, their):
        self.expect(what + ', time', our and abs(seconds_of(our) - seconds_of(their)) < 0.0011, our, their)

    def compare_again(self, what, out, ours):
        """GDAL reads from the result what is in it."""
        again = features_by_gdal(out, None)
        self.expect(what + ' as GDAL reads them', again is not None and len(again) == len(ours),
                    len(ours), again and len(again))
        for our, their in zip(ours, again or []):
            self.compare_positions(what + ' as GDAL reads them', positions_of(our['geometry']),
                                   positions_of(their['geometry']))

    def compare_kml(self, path, folder, layer, what, ours):
        out = os.path.join(folder, 'out.kml')
        self.export(path, out, layer)
        again = features_by_gdal(out, None)
        what += ' in KML as GDAL reads them'
        self.expect(what, again is not None, len(ours), again)
        placed = [our for our in ours if our['geometry']]
        again = [their for their in again or [] if their['geometry']]
        self.expect(what, len(placed) == len(again), len(placed), len(again))
        for our, their in zip(placed, again):
            self.compare_positions(what, positions_of(our['geometry']), positions_of(their['geometry']))

    def compare_table(self, path, folder, theirs):
        out = os.path.join(folder, 'out.csv')
        rows = []
        if self.export(path, out, 'points'):
            with open(out, encoding='utf-8', newline='') as file:
                rows = list(csv.DictReader(file))
        what = os.path.basename(path) + ', points'
        self.expect(what, len(rows) == len(theirs), len(rows), len(theirs))
        for number, (row, their) in enumerate(zip(rows, theirs)):
            where = '%s %d' % (what, number + 1)
            self.compare_positions(where, [(float(row['lon']), float(row['lat']))], positions_of(their['geometry']))
            self.compare_number(where + ', ele', row['ele'], their['properties'].get('ele'))
            self.compare_properties(where, row, their['properties'])


def say_skipped(reason):
    """In the form in which ./check lists why tests were skipped."""
    print('exports.py: Skipped\n%s' % reason)


def files_in(folders):
    for folder in folders:
        if not os.path.isdir(folder):
            say_skipped('there is no folder ' + folder)
        for where, _, names in sorted(os.walk(folder)):
            for name in sorted(names):
                path = os.path.join(where, name)
                if name.endswith('.gpx') and os.path.getsize(path) <= LARGEST:
                    yield path


def main():
    tool, *folders = sys.argv[1:]
    if not shutil.which('ogr2ogr'):
        say_skipped('ogr2ogr (gdal-bin) is not installed and compares nothing')
        return SKIPPED
    comparison = Comparison(tool)
    unread = 0
    with tempfile.TemporaryDirectory() as folder:
        for path in files_in(folders):
            model = run([tool, 'dump', path])
            if model is None or '"unread":' in model:
                unread += 1
            else:
                comparison.compare(path, folder)
    # GDAL gives a position to what has none.
    print('%d files left out, of which something cannot be read' % unread)
    print('%d values of %d files compared, %d files refused by GDAL' %
          (comparison.values, comparison.files, comparison.refused))
    print('\n'.join(comparison.failures[:50]))
    if comparison.files == 0:
        comparison.failures.append('nothing was compared')
    return 1 if comparison.failures else 0


if __name__ == '__main__':
    sys.exit(main())
