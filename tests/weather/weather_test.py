"""Windows failing in turn: each call of each function of Windows fails while the add-in is at work.

    weather_test.py PROGRAM [--whole] [--plays N] [--seed N] [--share A/B] [--jobs N] [--report FILE] [--only PLAY]
                    [--line LINE]

PROGRAM is weather.exe. Without --whole, a number of plays is chosen by a fixed seed and as many by a new one, which is
printed; where CI is set in the environment by the fixed seed alone. Whole: each call point of Outlook 2003, failing once
and from then on, and every tenth of the other versions. With --jobs so many play side by side, each on a screen of its
own.
A play that crashes or hangs ends the program; it is started again behind that play. Nothing may be found."""
import argparse
import collections
import concurrent.futures
import contextlib
import os
import pathlib
import random
import shutil
import sys
import tempfile
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent))
from testing.wine import Display, Prefix, lines_of, windows_path  # noqa: E402

WAYS = ("once", "on")
FULL = "11"
OTHERS = ("9", "10", "12", "16")
FIXED_SEED = 2003
PATIENCE = 3600


class Weather:
    def __init__(self, prefix, program, folder):
        self.prefix, self.program, self.folder = prefix, program, pathlib.Path(folder)

    def points(self, version):
        """[(play, function, how often it is called)]"""
        for _ in range(3):  # a hang is a busy machine's unless it comes again, as in confirmed()
            code, lines = self.prefix.ask(self.program, "count", version, timeout=600)
            if not any("hangs" in line for line in lines):
                break
        unlisted = [line for line in lines if line.startswith("unlisted ")]
        faults = [line for line in lines if line.startswith("bad ")]
        if code != 0 or unlisted or faults:
            sys.exit("\n".join(["weather: without any failing:", f"ended with {code}", *unlisted, *faults]))
        return [(play, function, int(calls)) for play, function, calls in (line.split("|") for line in lines if "|" in line)]

    def play(self, plan):
        """Plays them all: {line of the plan: [what was found]}, and how many never reached their call."""
        file = self.folder / "plan.txt"
        file.write_text("\n".join(plan) + "\n")
        found, missed, first = collections.defaultdict(list), 0, 0
        while first < len(plan):
            code, lines = self.prefix.ask(self.program, "play", windows_path(file), first, timeout=PATIENCE)
            last = first
            for line in lines:
                word, _, rest = line.partition(" ")
                if word == "at":
                    last = int(rest)
                elif word == "bad":
                    number, _, what = rest.partition(": ")
                    found[int(number)].append(what)
                elif word == "missed":
                    missed += 1
            if code == 0:
                break
            if not found[last]:
                found[last].append(f"ended with {code}")
            first = last + 1
        return found, missed

    def confirmed(self, plan, found):
        """Those alone again that hung: a machine may have been too busy."""
        for number in [number for number, what in found.items() if "hangs" in what]:
            again, _ = self.play([plan[number]])
            if again:
                found[number] = again[0]
            else:
                del found[number]
        return {number: what for number, what in found.items() if what}


def whole_plan(points, version, step):
    plan = [f"{version}|{play}|{function}|{number}|{way}"
            for play, function, calls in points for number in range(1, calls + 1) for way in WAYS]
    return plan[::step]


def sample(points, count, seed):
    """Every play and every function as likely as any other, however often it is called."""
    chance = random.Random(seed)
    functions = collections.defaultdict(list)
    for play, function, calls in points:
        functions[play].append((function, calls))
    plan = []
    for _ in range(count):
        version = chance.choice((FULL,) * len(OTHERS) + OTHERS)
        play = chance.choice(sorted(functions))
        function, calls = chance.choice(functions[play])
        plan.append(f"{version}|{play}|{function}|{chance.randint(1, calls)}|{chance.choice(WAYS)}")
    return sorted(plan)


def chosen_plan(weather, arguments):
    if arguments.line:
        return arguments.line
    points = weather.points(FULL)
    print(f"call points of Outlook 2003: {sum(calls for *_, calls in points)} of "
          f"{len({function for _, function, _ in points})} functions")
    if not arguments.whole:
        seeds = [FIXED_SEED]
        if not os.environ.get("CI"):  # there a result shall depend on the sources alone
            seeds.append(arguments.seed if arguments.seed is not None else random.SystemRandom().randrange(10**6))
        print(f"seeds: {' and '.join(map(str, seeds))}, {arguments.plays} plays each")
        return [line for seed in seeds for line in sample(points, arguments.plays, seed)]
    plan = whole_plan(points, FULL, 1)
    for version in OTHERS:
        plan += whole_plan(weather.points(version), version, 10)
    return plan


@contextlib.contextmanager
def house_of_its_own(program):
    """The program with the library beside it, where the library writes its log."""
    with tempfile.TemporaryDirectory() as folder, Display() as display:
        programs, own = pathlib.Path(program).resolve().parent, pathlib.Path(folder) / "programs"
        shutil.copytree(programs / "addin", own / "addin")
        yield Weather(Prefix(folder, display), shutil.copy(program, own), folder)


def play_part(program, plan):
    """{line: [what was found]}, and how many never reached their call."""
    with house_of_its_own(program) as weather:
        found, missed = weather.play(plan)
        return {plan[number]: what for number, what in weather.confirmed(plan, found).items()}, missed


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("program")
    parser.add_argument("--whole", action="store_true")
    parser.add_argument("--plays", type=int, default=150)
    parser.add_argument("--seed", type=int)
    parser.add_argument("--share", default="1/1", help="A/B: the A-th of B parts of the plan")
    parser.add_argument("--jobs", type=int, default=1)
    parser.add_argument("--only", help="only the plays of that name")
    parser.add_argument("--line", action="append", help="just this play, as the findings name it")
    parser.add_argument("--report", help="write the findings there as well")
    arguments = parser.parse_args()
    begin = time.monotonic()
    with house_of_its_own(arguments.program) as weather:
        plan = chosen_plan(weather, arguments)
    if arguments.only:
        plan = [line for line in plan if line.split("|")[1] == arguments.only]
    part, parts = map(int, arguments.share.split("/"))
    plan = plan[part - 1::parts]
    found, missed = {}, 0
    with concurrent.futures.ThreadPoolExecutor(arguments.jobs) as jobs:
        shares = [plan[job::arguments.jobs] for job in range(arguments.jobs)]
        for part_found, part_missed in jobs.map(play_part, [arguments.program] * len(shares), shares):
            found.update(part_found)
            missed += part_missed
    findings = [f"{line}: {what}" for line in plan for what in found.get(line, [])]
    print("\n".join(findings))
    if arguments.report:
        pathlib.Path(arguments.report).write_text("\n".join(findings) + "\n")
    print(f"failures played: {len(plan)}, of which {missed} never came to their call; plays with findings: {len(found)}; "
          f"{time.monotonic() - begin:.0f} s")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
