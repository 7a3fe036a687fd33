"""What is to be made of what, and making it."""
import os
import threading
from dataclasses import dataclass

from encoder import lame
from encoder.failure import Failure, unexpected
from encoder.target import Target, numbered
from encoder.wave_file import WaveFile


@dataclass
class Job:
    """One MP3 file."""
    sources: list
    folder: str
    stem: str
    number: int  # Of the first name that is free.


def plan(options):
    """A job for each file, or one for all. A file that is named twice is encoded once, unless it is joined."""
    # Without looking at what the parts of a path are: "a/../b" is not always b.
    files = [os.path.join(os.getcwd(), path) for path in options.files]
    groups = [files] if options.join else [[path] for path in dict.fromkeys(files)]
    taken, jobs = set(), []
    for group in groups:
        folder, name = os.path.split(group[0])
        if options.folder:
            folder = os.path.join(os.getcwd(), options.folder)
        stem, number = os.path.splitext(name)[0], 1
        while (path := os.path.join(folder, numbered(stem, number, 255))) in taken or os.path.lexists(path):
            number += 1
        taken.add(path)
        jobs.append(Job(group, folder, stem, number))
    return jobs


def run_all(jobs, options):
    """(paths of what was made, failures), in the order of the jobs."""
    results, numbers = [None] * len(jobs), iter(range(len(jobs)))

    def work():
        for number in numbers:
            results[number] = run(jobs[number], options)
    helpers = start_helpers(min(len(jobs), len(os.sched_getaffinity(0))) - 1, work)
    work()
    for helper in helpers:
        helper.join()
    return [path for path, _ in results if path], [failure for _, failures in results for failure in failures]


def start_helpers(count, work):
    """Up to so many threads at that work. Where the system gives none, the caller does it alone."""
    helpers = []
    try:
        for _ in range(count):
            helper = threading.Thread(target=work)
            helper.start()
            helpers.append(helper)
    except RuntimeError:
        pass
    return helpers


def run(job, options):
    """(path of the MP3 file or nothing, failures)"""
    try:
        sources = [WaveFile(path) for path in job.sources]
        expect_one_format(sources)
        with Target(job.folder, job.stem) as target:
            return make(job, sources, target, options)
    except Failure as failure:
        if failure.path is None and failure.text != "lame_missing":
            failure.path = job.sources[0]
        return None, [failure]
    except Exception as error:
        return None, [unexpected(error, job.sources[0])]


def expect_one_format(sources):
    first = sources[0].format
    for source in sources:
        if source.format != first:
            raise Failure("formats_differ", sources[0].path, name=os.path.basename(source.path),
                          format=source.format.told(), first=first.told())


def make(job, sources, target, options):
    mp3 = lame.encode(sources, target, options.bit_rate, options.mono, 0)
    if options.no_gap and not mp3.noted:
        mp3 = lame.encode(sources, target, options.bit_rate, options.mono, lame.rate_with_note(mp3))
    os.fsync(target.descriptor)
    if options.delete and not lame.decodes(sources, target, mp3):
        raise Failure("not_decoded", job.sources[0])
    made = target.publish(job.number)
    try:
        target.sync_folder()
    except OSError as error:
        return made, [Failure("not_on_disk", made, reason=error.strerror)]
    if not options.delete:
        return made, []
    return made, [failure for source in unique(sources) if (failure := delete(source))]


def unique(sources):
    return {source.path: source for source in sources}.values()


def delete(source):
    """Removes a WAV file of which the MP3 file holds everything; a failure if it stays."""
    if source.unread:
        return Failure(source.unread, source.path)
    try:
        return None if source.delete() else Failure("changed", source.path)
    except OSError as error:
        return Failure("not_deleted", source.path, reason=error.strerror)
