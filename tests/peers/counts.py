#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Lets other programs count the waypoints, routes, route points, tracks and track points of GPX files, and of what
vexagpx writes of them as 1.1 and as 1.0: the counts are equal.

    counts.py VEXAGPX FOLDER...

Programs that are not installed are named and left out, and so are folders that are not there. The status is 77 when none
of the programs is installed.
"""
import os
import re
import shutil
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree

LARGEST = 4 << 20
SECONDS = 120
SKIPPED = 77
KINDS = ('waypoints', 'routes', 'route_points', 'tracks', 'track_points')
# gpxpy wants text, and passes it on in UTF-8 whatever the declaration says.
GPXPY = '''
import re, sys, gpxpy
data = open(sys.argv[1], 'rb').read()
encoding = 'utf-16' if data[:2] in (b'\\xff\\xfe', b'\\xfe\\xff') else 'utf-8-sig'
declared = re.match(rb'<[?]xml[^>]*encoding=.([-A-Za-z0-9_]+)', data)
text = data.decode(declared.group(1).decode() if declared and encoding == 'utf-8-sig' else encoding).lstrip('\\ufeff')
gpx = gpxpy.parse(re.sub('(<[?]xml[^>]*?) encoding=[^ ?]+', '\\\\1', text, count=1))
print(len(gpx.waypoints), len(gpx.routes), sum(len(route.points) for route in gpx.routes), len(gpx.tracks),
      sum(len(segment.points) for track in gpx.tracks for segment in track.segments))
'''

# What a program counts in what was written of a file, where it counts less in the file itself.
EXCEPTIONS = {
    # It declares the namespace of GPX again in waypoints; gpxpy skips these.
    ('gpxpy', 'cgeo-gctour.gpx'): (72, 0, 0, 0, 0),
}


def say_skipped(reason, script='counts.py'):
    """In the form in which ./check lists why tests were skipped."""
    print('%s: Skipped\n%s' % (script, reason))


def output_of(command):
    """None if the program refuses the file."""
    done = subprocess.run(command, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                          timeout=SECONDS, check=False)
    return done.stdout.decode('utf-8', 'replace') if done.returncode == 0 else None


def count_by_ogrinfo(path):
    text = output_of(['ogrinfo', '-so', '-al', path])
    if text is None:
        return None
    layers = dict(re.findall(r'^Layer name: (\w+)$.*?^Feature Count: (\d+)$', text, re.M | re.S))
    return tuple(int(layers.get(kind, 0)) for kind in KINDS)


def count_by_gpsbabel(path):
    """gpsbabel counts nothing itself: what it has read are the elements that it writes."""
    text = output_of(['gpsbabel', '-w', '-r', '-t', '-i', 'gpx', '-f', path, '-o', 'gpx,gpxver=1.0', '-F', '-'])
    if text is None:
        return None
    names = [element.tag.rpartition('}')[2] for element in ElementTree.fromstring(text.encode()).iter()]
    return tuple(names.count(name) for name in ('wpt', 'rte', 'rtept', 'trk', 'trkpt'))


def python_with_gpxpy():
    for python in (sys.executable, '/usr/bin/python3'):
        if subprocess.call([python, '-c', 'import gpxpy'], stderr=subprocess.DEVNULL) == 0:
            return python
    return None


def gpxpy_counter():
    python = python_with_gpxpy()
    return None if python is None else lambda path: count_by_gpxpy(python, path)


def count_by_gpxpy(python, path):
    text = output_of([python, '-c', GPXPY, path])
    return tuple(map(int, text.split())) if text else None


def counters():
    found = {'gpxpy (python3-gpxpy)': gpxpy_counter(),
             'ogrinfo (gdal-bin)': count_by_ogrinfo if shutil.which('ogrinfo') else None,
             'gpsbabel (gpsbabel)': count_by_gpsbabel if shutil.which('gpsbabel') else None}
    for name, counter in found.items():
        if counter is None:
            say_skipped(name + ' is not installed and counts nothing')
    return {name.split()[0]: counter for name, counter in found.items() if counter is not None}


def files_in(folders):
    for folder in folders:
        if not os.path.isdir(folder):
            say_skipped('there is no folder ' + folder)
        for where, _, names in sorted(os.walk(folder)):
            for name in sorted(names):
                path = os.path.join(where, name)
                if name.endswith('.gpx') and os.path.getsize(path) <= LARGEST:
                    yield path


class Comparison:
    def __init__(self, tool, found):
        self.tool = tool
        self.found = found
        self.compared = {name: 0 for name in found}
        self.refused = {name: 0 for name in found}
        self.failures = []

    def compare(self, path, folder):
        before = {name: counter(path) for name, counter in self.found.items()}
        for version in ('1.1', '1.0'):
            out = os.path.join(folder, 'out.gpx')
            if output_of([self.tool, 'convert', '--gpx', version, path, out]) is None:
                return False
            for name, counter in self.found.items():
                self.compare_counts(name, '%s as %s' % (os.path.basename(path), version), before[name], counter(out))
        return True

    def compare_counts(self, name, what, before, after):
        if before is None:
            self.refused[name] += 1
            return
        self.compared[name] += 1
        expected = EXCEPTIONS.get((name, what.split()[0]), before)
        if after != expected:
            self.failures.append('%s counts in %s: %s, and in what was written: %s' % (name, what, before, after))


def main():
    tool, *folders = sys.argv[1:]
    found = counters()
    if not found:
        return SKIPPED
    comparison = Comparison(tool, found)
    unread = 0
    with tempfile.TemporaryDirectory() as folder:
        for path in files_in(folders):
            unread += 0 if comparison.compare(path, folder) else 1
    print('%d files cannot be read' % unread)
    for name, count in comparison.compared.items():
        print('%s compared %d times and refused %d of the files before' % (name, count, comparison.refused[name]))
        if count == 0:
            comparison.failures.append(name + ' has compared nothing')
    print('\n'.join(comparison.failures))
    return 1 if comparison.failures else 0


if __name__ == '__main__':
    sys.exit(main())
