#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Compares the figures that `vexagpx stats` prints of the tracks and routes of GPX files with those of gpxpy and gpsbabel.

    statistics.py VEXAGPX FOLDER...

What is defined alike must be equal: points, heights, first and last time, raw ascent and descent. Distances may differ as
far as a sphere differs from the ellipsoid. What other programs define in other ways is not compared; the manual's page on
statistics says why. Programs that are not installed are named and left out, and so are folders that are not there. The
status is 77 when none of the programs is installed.
"""
import json
import os
import re
import shutil
import sys
from datetime import datetime

sys.dont_write_bytecode = True
import counts

# A sphere with the radius of the equator, as others take the earth for, is off by 0.56 % where a degree of latitude is
# shortest; gpxpy's flat formula by as much again in longer pieces.
SPHERE = 0.007
FLAT = 0.012

# Where a program measures something else, and why. Each of them must still differ.
EXCEPTIONS = {
    ('gpsbabel', 'day.gpx'): 'has no length between points of latitude 0',
    ('gpsbabel', 'dropped-point.gpx'): 'keeps a point whose latitude cannot be read',
    ('gpsbabel', 'lossy.gpx'): 'keeps a point without a longitude',
}

# Prints what gpxpy has of each track and route. The raw ascents are computed from its points.
GPXPY = counts.GPXPY.rpartition('print(')[0] + '''
import json

def seconds(time):
    return time.timestamp() if time else None

def figures(segments):
    points = [point for segment in segments for point in segment.points]
    heights = [point.elevation for point in points if point.elevation is not None]
    times = [seconds(point.time) for point in points if point.time]
    up = down = 0.0
    for segment in segments:
        known = [point.elevation for point in segment.points if point.elevation is not None]
        for low, high in zip(known, known[1:]):
            up += max(0.0, high - low)
            down += max(0.0, low - high)
    return {'points': len(points), 'pointsWithoutTime': len(points) - len(times),
            'pointsWithoutHeight': len(points) - len(heights), 'rawAscent': up, 'rawDescent': down,
            'lowest': min(heights, default=None), 'highest': max(heights, default=None),
            'start': min(times, default=None), 'end': max(times, default=None)}

result = {'tracks': [], 'routes': []}
for track in gpx.tracks:
    result['tracks'].append({**figures(track.segments), 'segments': len(track.segments),
                             'distance': track.length_2d(), 'distanceWithHeight': track.length_3d()})
for route in gpx.routes:
    result['routes'].append({**figures([route]), 'distance': gpxpy.geo.length_2d(route.points)})
print(json.dumps(result))
'''


def own_figures(tool, path):
    text = counts.output_of([tool, 'stats', '--json', path])
    if text is None:
        return None
    figures = json.loads(text)
    for one in figures['tracks'] + figures['routes']:
        for name in ('start', 'end'):
            if name in one:
                one[name] = datetime.fromisoformat(one[name].replace('Z', '+00:00')).timestamp()
    return figures


def gpxpy_reader():
    python = counts.python_with_gpxpy()
    if python is None:
        return None

    def read(path):
        text = counts.output_of([python, '-c', GPXPY, path])
        return json.loads(text) if text else None
    return read


def gpsbabel_figures(path):
    """Of tracks that have points. Distance and times are those of its training files, heights those of its KML."""
    laps = counts.output_of(['gpsbabel', '-t', '-i', 'gpx', '-f', path, '-o', 'gtrnctr,course=0', '-F', '-'])
    kml = counts.output_of(['gpsbabel', '-t', '-i', 'gpx', '-f', path, '-o', 'kml,units=m,trackdata=1', '-F', '-'])
    if laps is None or kml is None:
        return None
    metres = [float(text) for text in re.findall(r'<DistanceMeters>([-\d.]+)</DistanceMeters>', laps)]
    tables = re.findall(r'<b>Distance</b>.*?</table>', kml, re.S)
    if len(metres) != len(tables):
        return None
    return {'tracks': [{'distance': distance, **heights_in(table)} for distance, table in zip(metres, tables)],
            'routes': []}


def heights_in(table):
    """Heights in the table are metres, or kilometres from a certain height on."""
    found = {}
    for name, label in (('lowest', 'Min Alt'), ('highest', 'Max Alt')):
        match = re.search(r'<b>%s</b> ([-\d.]+) (meters|km)' % label, table)
        if match:
            found[name] = float(match.group(1)) * (1000 if match.group(2) == 'km' else 1)
    return found


def difference(name, own, other, distance_limit):
    """A text if the two values differ by more than they may."""
    if own is None and other is None:
        return None
    if own is None or other is None:
        return None if (own or other or 0) == 0 else 'is %s, and %s there' % (own, other)
    if name.startswith('distance'):
        limit = max(distance_limit * max(own, other), 0.02)
    elif name in ('lowest', 'highest', 'rawAscent', 'rawDescent'):
        limit = 0.002 + 1e-9 * abs(other)
    else:
        limit = 0.001 if name in ('start', 'end') else 0
    return None if abs(own - other) <= limit else 'is %s, and %s there' % (own, other)


class Comparison:
    def __init__(self, programs):
        self.programs = programs
        self.compared = {name: 0 for name in programs}
        self.files = {name: 0 for name in programs}
        self.failures = []

    def compare(self, path, own):
        for name, (read, limit) in self.programs.items():
            other = read(path)
            if other is None:
                print('%s refuses %s' % (name, os.path.basename(path)))
                continue
            before = self.compared[name]
            failures = self.failures
            self.failures = []
            self.compare_file(name, path, own, other, limit)
            self.files[name] += 1 if self.compared[name] > before else 0
            reason = EXCEPTIONS.get((name, os.path.basename(path)))
            if reason is not None:
                print('%s %s in %s' % (name, reason, os.path.basename(path)))
                self.failures = [] if self.failures else ['%s no longer differs: %s' % (name, os.path.basename(path))]
            self.failures = failures + self.failures

    def compare_file(self, name, path, own, other, limit):
        for kind in ('tracks', 'routes'):
            paths = own[kind] if name == 'gpxpy' else [one for one in own[kind] if one['points'] > 0]
            what = '%s: %s of %s' % (name, kind, os.path.basename(path))
            if len(other[kind]) == len(paths):
                self.compare_paths(what, paths, other[kind], limit)
            elif name == 'gpxpy' or kind == 'tracks':
                self.failures.append('%s are %d, and %d there' % (what, len(paths), len(other[kind])))

    def compare_paths(self, what, own, other, limit):
        program = what.split(':')[0]
        for number, (one, two) in enumerate(zip(own, other), 1):
            for name, value in two.items():
                # gpsbabel bridges the gaps between segments.
                if name == 'distance' and program == 'gpsbabel' and one['segments'] > 1 and value > one[name]:
                    continue
                self.compared[program] += 1
                text = difference(name, one.get(name), value, limit)
                if text is not None:
                    self.failures.append('%s, %d: %s %s' % (what, number, name, text))


def main():
    tool, *folders = sys.argv[1:]
    found = {'gpxpy': (gpxpy_reader(), FLAT),
             'gpsbabel': (gpsbabel_figures if shutil.which('gpsbabel') else None, SPHERE)}
    for name, (read, _) in found.items():
        if read is None:
            counts.say_skipped(name + ' is not installed and measures nothing', 'statistics.py')
    comparison = Comparison({name: program for name, program in found.items() if program[0] is not None})
    if not comparison.programs:
        return counts.SKIPPED
    for path in counts.files_in(folders):
        own = own_figures(tool, path)
        if own is None:
            print('vexagpx cannot measure %s' % os.path.basename(path))
        elif own['tracks'] or own['routes']:
            comparison.compare(path, own)
    for name, count in comparison.compared.items():
        print('%s: %d figures of %d files compared' % (name, count, comparison.files[name]))
        if count == 0:
            comparison.failures.append(name + ' has measured nothing')
    print('\n'.join(comparison.failures))
    return 1 if comparison.failures else 0


if __name__ == '__main__':
    sys.exit(main())
