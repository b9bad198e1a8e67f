# SPDX-License-Identifier: MIT
"""The commands of the tool beside other programs that do the same, for bench/table."""
import os
import shutil

import rounds
import samples

TOOL = os.path.join(rounds.BUILD, 'hosts', 'vexagpx', 'vexagpx')
# The commands, with OUT for the file that they write.
COMMANDS = {
    'stats': ['stats'], 'stats --json': ['stats', '--json'], 'show': ['show'], 'index': ['index'],
    'index --duplicates': ['index', '--duplicates'], 'plot, picture': ['plot', '-o', 'OUT.svg'],
    'plot, page': ['plot', '-o', 'OUT.html'],
    'export, lines as GeoJSON': ['export', '-o', 'OUT.geojson', '--layer', 'LINES'],
    'export, lines as KML': ['export', '-o', 'OUT.kml', '--layer', 'LINES'],
    'export, points as CSV': ['export', '-o', 'OUT.csv', '--layer', 'POINTS'],
    'dump': ['dump'], 'check': ['check'], 'check --keep': ['check', '--keep']}
LINES = {'track points': 'tracks', 'route points': 'routes', 'waypoints': 'waypoints', 'geocaches': 'waypoints'}
POINTS = {'track points': 'points', 'route points': 'points', 'waypoints': 'waypoints', 'geocaches': 'waypoints'}
ONLY = {'caches': 'geocaches'}
GPXPY = '''
import sys, gpxpy
with open(sys.argv[1], encoding='utf-8') as file:
    gpx = gpxpy.parse(file)
for track in gpx.tracks:
    track.length_2d(), track.length_3d(), track.get_uphill_downhill(), track.get_elevation_extremes()
    track.get_moving_data(), track.get_time_bounds(), track.get_bounds()
'''


def own_jobs(kind, path, out):
    words = {'LINES': LINES[kind], 'POINTS': POINTS[kind]}
    jobs = {}
    for name, command in {**COMMANDS, 'caches': ['caches']}.items():
        if ONLY.get(name, kind) != kind:
            continue
        filled = [words.get(word, word.replace('OUT', out)) for word in command]
        # check ends with 1 when the default reading loses something.
        accepted = (0, 1) if command[0] == 'check' else (0,)
        jobs[name] = lambda filled=filled, accepted=accepted: rounds.seconds([TOOL, *filled, path], accepted)
    return jobs


def other_jobs(kind, path, out):
    """What the other programs have of the same. None of them draws."""
    jobs = {}
    if shutil.which('gpsbabel'):
        def convert(form, ending):
            return lambda: rounds.seconds_of_writing(
                ['gpsbabel', '-i', 'gpx', '-f', path, '-o', form, '-F', out + ending], out + ending)
        jobs['gpsbabel, KML with statistics of tracks'] = convert('kml', '.gpsbabel.kml')
        jobs['gpsbabel, GeoJSON'] = convert('geojson', '.gpsbabel.geojson')
        jobs['gpsbabel, CSV'] = convert('unicsv', '.gpsbabel.csv')
    if shutil.which('ogr2ogr'):
        points = {'track points': 'track_points', 'route points': 'route_points'}.get(kind, 'waypoints')

        def translate(form, ending, layer, *options):
            return lambda: rounds.seconds_of_writing(
                ['ogr2ogr', '-f', form, *options, out + ending, path, layer], out + ending)
        jobs['ogr2ogr, lines as GeoJSON'] = translate('GeoJSON', '.ogr.geojson', LINES[kind])
        jobs['ogr2ogr, lines as KML'] = translate('KML', '.ogr.kml', LINES[kind])
        jobs['ogr2ogr, points as CSV'] = translate('CSV', '.ogr.csv', points, '-lco', 'GEOMETRY=AS_XY')
    return jobs


def measure_kind(folder, kind, count, turns):
    path = samples.make(folder, kind, count)
    out = os.path.join(folder, 'out')
    jobs = {'Parse, complete': lambda: rounds.measure('complete', path)}
    found = rounds.least({**jobs, **own_jobs(kind, path, out), **other_jobs(kind, path, out)}, turns)
    python = rounds.python_with('gpxpy') if kind == 'track points' else None
    if python:
        found['gpxpy, figures of tracks'] = rounds.seconds([python, '-c', GPXPY, path])
    return found


def table(folder, counts, turns):
    """CPU time of whole processes beside that of complete reading within a process."""
    found = {kind: measure_kind(folder, kind, count, turns) for kind, count in counts.items()}
    print('\nThe commands of the tool: CPU seconds, and how many times as long as complete reading\n')
    print('| | %s |' % ' | '.join('%d %s' % (count, kind) for kind, count in counts.items()))
    print('|---' * (1 + len(counts)) + '|')
    rows = dict.fromkeys(name for kind in counts for name in found[kind])
    for row in rows:
        cells = ['%.3f s, **%.2f**' % (found[kind][row], found[kind][row] / found[kind]['Parse, complete'])
                 if row in found[kind] else '' for kind in counts]
        print('| %s | %s |' % (row, ' | '.join(cells)), flush=True)
