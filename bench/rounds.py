# SPDX-License-Identifier: MIT
"""What bench/table, bench/small and bench/losses share: programs built here, processes, and rounds that take turns."""
import os
import subprocess
import sys

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
BUILD = os.path.join(ROOT, 'build', 'bench')


def built(name):
    """A program of this folder."""
    return os.path.join(BUILD, 'bench', name)


MEASURE = built('measure')


def build(*targets):
    subprocess.check_call([os.path.join(ROOT, 'scripts', 'install-dependencies'), '--bench'])
    subprocess.check_call(['cmake', '--preset', 'bench'], cwd=ROOT, stdout=subprocess.DEVNULL)
    subprocess.check_call(['cmake', '--build', '--preset', 'bench', '--target', *(targets or ['measure'])], cwd=ROOT,
                          stdout=subprocess.DEVNULL)


def remove(path):
    if os.path.exists(path):
        os.remove(path)


def run(command, accepted=(0,)):
    """CPU seconds of a process, and what it printed. It must end with one of the accepted statuses."""
    process = subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
    output = process.stdout.read()
    _, status, usage = os.wait4(process.pid, 0)
    process.returncode = os.waitstatus_to_exitcode(status)
    if process.returncode not in accepted:
        raise RuntimeError('failed: ' + ' '.join(command))
    return usage.ru_utime + usage.ru_stime, output


def seconds(command, accepted=(0,)):
    return run(command, accepted)[0]


def seconds_of_writing(command, out):
    """A new file, as in measure_writing."""
    remove(out)
    return seconds(command)


def printed(command):
    return float(run(command)[1])


def measure(mode, path):
    return printed([MEASURE, mode, path])


def measure_writing(mode, path, out):
    """Writes a new file: what the system needs to empty an old one depends on that file."""
    remove(out)
    return printed([MEASURE, mode, path, out])


def least(jobs, rounds):
    """The least of the rounds: other programs only ever add to the time that a job takes."""
    times = {name: [] for name in jobs}
    for _ in range(rounds):
        for name, job in jobs.items():
            times[name].append(job())
    return {name: min(values) for name, values in times.items()}


def python_with(module):
    """The first Python that has the module, or None: the one in the path need not be the one of Debian's packages."""
    for python in (sys.executable, '/usr/bin/python3'):
        if subprocess.call([python, '-c', 'import ' + module], stderr=subprocess.DEVNULL) == 0:
            return python
    return None
