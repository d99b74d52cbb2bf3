#!/usr/bin/env python3
"""One small change at a time in a copy of the sources: does a test notice?

    scripts/mutants.py [N] [--seed S] [--only PATH-PART] [--list] [--unit]

N changes are drawn at random from all that are possible under src/. Each is built and tested in build/mutants/tree: text
that is pure natively first, then the unit tests of its folder that link the file, then the programs of tests/e2e and, for
what the check program has, of tests/check, then all other unit tests that link it. A test that fails three times, or takes
far longer than usual twice, kills the change; one that does not compile does not count. --unit leaves tests/e2e and
tests/check out. What became of each change is added to build/mutants/seen.txt, and a later run with the same seed goes on
behind them. The survivors stand in build/mutants/survivors.txt, and each of them wants a test, or a reason why nobody could
tell the difference. Ends with 1 when fewer than nine in ten were killed."""
import argparse
import collections
import pathlib
import random
import re
import shutil
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
HOME = ROOT / "build/mutants"
TREE = HOME / "tree"
WINDOWS, NATIVE = "win32-release", "native-release"
E2E = {name: [name, "installed_addin"] for name in ("e2e_scenarios", "e2e_menus", "e2e_ribbon", "e2e_questions")}
CHECK = {"check_seeded": ["check_seeded", "check_parts"]}  # test -> what is built for it
# Programs that try one thing at great length: for changes in their own folder only.
OF_ONE_THING = {"config_profile_difference_test", "resources_test", "bridge_two_processes_test"}
TARGET = 90  # percent

# (what is replaced, by what); in code only, never in comments, strings or preprocessor lines.
SWAPS = [
    (re.compile(r"(?<![=!<>+\-*/&|^%])==(?!=)"), "!="),
    (re.compile(r"!=(?!=)"), "=="),
    (re.compile(r"(?<= )<(?= )"), "<="),
    (re.compile(r"(?<= )>(?= )"), ">="),
    (re.compile(r"(?<= )<=(?= )"), "<"),
    (re.compile(r"(?<= )>=(?= )"), ">"),
    (re.compile(r"(?<= )&&(?= )"), "||"),
    (re.compile(r"(?<= )\|\|(?= )"), "&&"),
    (re.compile(r"(?<= )\+(?= )"), "-"),
    (re.compile(r"(?<= )-(?= )"), "+"),
    (re.compile(r"(?<= )\*(?= [\w(])"), "/"),
    (re.compile(r"(?<= )\|(?= )"), "&"),
    (re.compile(r"\btrue\b"), "false"),
    (re.compile(r"\bfalse\b"), "true"),
    (re.compile(r"(?<![\w.\"'])0(?![\w.\"'])"), "1"),
    (re.compile(r"(?<![\w.\"'])[1-9]\d{0,4}(?![\w.\"'])"), lambda found: str(int(found.group()) + 1)),
    (re.compile(r"(?<=[( ])!(?=[\w(])"), ""),
    (re.compile(r"\bif \((?!constexpr)(?=[^;]*\) )"), "if (!("),
]
# A statement that stands alone: a call or an assignment, not a declaration or a jump.
STATEMENT = re.compile(r"^\s+(?!return\b|break\b|continue\b|using\b|case\b|default\b|const\b|static\b|else\b|throw\b)"
                       r"(?:[A-Za-z_][\w.:\->()\[\]]*(?:\(.*\)| [+\-|&]?= .*)|[+]{2}\w+|delete .*);\s*(?://.*)?$")
QUOTED = re.compile(r"\"(?:[^\"\\]|\\.)*\"|'(?:[^'\\]|\\.)+'")


def code_only(line):
    """The line with blanks where strings and comments are: the columns stay."""
    line = QUOTED.sub(lambda found: found.group()[0] + " " * (len(found.group()) - 2) + found.group()[0], line)
    comment = line.find("//")
    return line if comment < 0 else line[:comment] + " " * (len(line) - comment)


def closing(line, start):
    """The column of the bracket that closes the one at `start`; -1 where it is on another line."""
    depth = 0
    for column in range(start, len(line)):
        depth += {"(": 1, ")": -1}.get(line[column], 0)
        if depth == 0:
            return column
    return -1


def changes_of(line):
    """Every (changed line, what was done)."""
    code = code_only(line)
    if code.lstrip().startswith("#") or "static_assert" in code:
        return
    for pattern, instead in SWAPS:
        for found in pattern.finditer(code):
            by = instead(found) if callable(instead) else instead
            if by == "if (!(":
                end = closing(code, found.end() - 1)
                if end > 0 and ";" not in code[found.start():end]:
                    yield line[:found.end()] + "!(" + line[found.end():end] + ")" + line[end:], "condition turned round"
            else:
                yield line[:found.start()] + by + line[found.end():], f"{found.group()} -> {by or 'nothing'}"
    if STATEMENT.match(code):
        indent = len(line) - len(line.lstrip())
        yield line[:indent] + ";", "statement left out"


def all_changes(part):
    for path in sorted((TREE / "src").rglob("*")):
        if path.suffix not in (".cpp", ".h") or part not in str(path.relative_to(TREE)):
            continue
        for number, line in enumerate(path.read_text("utf-8").split("\n")):
            for changed, what in changes_of(line):
                yield path, number, changed, what


def run(command, limit=1800, **more):
    """(exit code, what was printed); the code is None where it took too long."""
    with (HOME / "output.txt").open("w+b") as output:
        process = subprocess.Popen(command, cwd=TREE, stdin=subprocess.DEVNULL, stdout=output,
                                   stderr=subprocess.STDOUT, start_new_session=True, **more)
        try:
            code = process.wait(limit)
        except subprocess.TimeoutExpired:
            subprocess.run(["kill", "--", f"-{process.pid}"], stderr=subprocess.DEVNULL)
            process.wait()
            code = None
        output.seek(0)
        return code, output.read().decode("utf-8", "replace")


def must(command):
    code, output = run(command)
    if code != 0:
        sys.exit(f"mutants: {' '.join(command)} ended with {code}\n{output[-3000:]}")
    return output


def copy_sources():
    """The files under version control as they are now; what is the same keeps its time, so that little is built."""
    TREE.mkdir(parents=True, exist_ok=True)
    listed = subprocess.run(["git", "ls-files", "-z", "--cached", "--others", "--exclude-standard"], cwd=ROOT,
                            capture_output=True, check=True).stdout
    wanted = {name.decode() for name in listed.split(b"\0") if name and (ROOT / name.decode()).is_file()}
    for old in TREE.rglob("*"):
        name = str(old.relative_to(TREE))
        if old.is_file() and not name.startswith("build/") and name not in wanted:
            old.unlink()
    for name in wanted:
        source, target = ROOT / name, TREE / name
        if not target.exists() or target.read_bytes() != source.read_bytes():
            target.parent.mkdir(parents=True, exist_ok=True)
            shutil.copy(source, target)


class Tests:
    """Which test programs a source file is linked into, in each of the two builds."""

    def __init__(self):
        self.of = {}       # build -> {source or header: [its tests, the most particular first]}
        self.seconds = {}  # (build, test) -> what it takes undisturbed
        for build in (NATIVE, WINDOWS):
            must(["cmake", "--preset", build])
            names = self.unit_tests(build)
            wholes = [target for targets in (E2E | CHECK).values() for target in targets] if build == WINDOWS else []
            must(["cmake", "--build", "--preset", build, "--target", *names, *wholes])
            self.of[build] = self.map(build, names)
        self.sources = self.including(WINDOWS)
        self.of_library = self.inputs_of("src/addin/CVOutlookAddIn.dll")
        self.of_check = self.inputs_of("src/check/CorvellaCheck.exe")

    @staticmethod
    def unit_tests(build):
        """Without the programs that only help a test: what ctest does not know cannot fail."""
        programs = must(["ninja", "-C", f"build/{build}", "-t", "targets", "all"])
        linked = set(re.findall(r"^tests/unit/(\w+)(?:\.exe)?: CXX_EXECUTABLE_LINKER", programs, re.M))
        known = must(["ctest", "--test-dir", f"build/{build}", "-N"])
        return sorted(linked & set(re.findall(r"Test +#\d+: (\w+)", known)))

    @staticmethod
    def inputs_of(program):
        listed = must(["ninja", "-C", f"build/{WINDOWS}", "-t", "inputs", program]).split()
        return {pathlib.Path(path).stem for path in listed if "/src/" in path and path.endswith(".cpp")}

    @staticmethod
    def including(build):
        """{source: all that it includes, and itself}"""
        headers, source = collections.defaultdict(set), None
        for line in must(["ninja", "-C", f"build/{build}", "-t", "deps"]).splitlines():
            if line.endswith("(VALID)"):
                source = None
            elif line.strip():
                path = str((TREE / "build" / build / line.strip()).resolve())  # a compiler cache writes relative ones
                source = source or path  # the first is what is compiled
                headers[source].add(path)
        return headers

    @staticmethod
    def map(build, names):
        headers = Tests.including(build)
        of, sizes = collections.defaultdict(set), {}
        for name in names:
            program = f"tests/unit/{name}" + (".exe" if build == WINDOWS else "")
            inputs = set(must(["ninja", "-C", f"build/{build}", "-t", "inputs", program]).split())
            linked = {path for path in inputs if path.endswith(".cpp")}
            sizes[name] = sum("/src/" in path for path in linked)
            for path in linked:
                for each in headers.get(path, {path}):
                    of[pathlib.Path(each)].add(name)

        def distance(path, test):
            return not test.startswith(path.parent.name), sizes[test], test

        return {path: sorted(tests, key=lambda test: distance(path, test)) for path, tests in of.items()}

    def plan(self, path, with_e2e):
        """The tests of a changed file, in the order in which they are tried."""
        native = [(NATIVE, test) for test in self.of[NATIVE].get(path, [])]
        linking = [test for test in self.of[WINDOWS].get(path, []) if test != "text_test" or not native]
        own = [test for test in linking if test.startswith(path.relative_to(TREE / "src").parts[0])]
        others = [test for test in linking if test not in own and test not in OF_ONE_THING]
        stems = {pathlib.Path(source).stem for source, included in self.sources.items() if str(path) in included}
        wholes = [*(E2E if stems & self.of_library else ()), *(CHECK if stems & self.of_check else ())]
        tests = [*own, *(wholes if with_e2e else []), *others]
        return native + [(WINDOWS, test) for test in tests]

    def notices(self, build, test):
        """Whether it fails three times, or twice takes far longer than usual: a busy machine fails a test now and then."""
        for tries in range(3):
            begin = time.monotonic()
            usual = self.seconds.get((build, test), 40 if test in E2E | CHECK else 15)
            code, _ = run(["ctest", "--test-dir", f"build/{build}", "-R", f"^{test}$"], 15 + 4 * usual)
            if code == 0:
                self.seconds.setdefault((build, test), time.monotonic() - begin)
                return False
            if code is None and tries > 0:
                return True
        return True


def killer(tests, path, with_e2e):
    """The test that notices; None where none does, "-" where the change does not compile."""
    for build, test in tests.plan(path, with_e2e):
        code, _ = run(["cmake", "--build", "--preset", build, "--target", *(E2E | CHECK).get(test, [test])], 600)
        if code != 0:
            return "-"
        if tests.notices(build, test):
            return test
    return None


class Seen:
    """What became of the changes that were tried, in this run and in earlier ones with the same seed: a line each."""

    def __init__(self, seed):
        self.file, self.seed = HOME / "seen.txt", str(seed)
        lines = self.file.read_text("utf-8").splitlines() if self.file.exists() else []
        fields = [line.split("\t") for line in lines]
        self.fate = {name: (fate, by) for seed, name, fate, by in fields if seed == self.seed}

    def add(self, name, fate, by):
        self.fate[name] = fate, by
        with self.file.open("a", encoding="utf-8") as file:
            file.write("\t".join((self.seed, name, fate, by)) + "\n")

    def of(self, fate):
        return [(name, by) for name, (known, by) in self.fate.items() if known == fate]


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("count", nargs="?", type=int, default=40)
    parser.add_argument("--seed", type=int)
    parser.add_argument("--only", default="", help="only files whose path holds this")
    parser.add_argument("--list", action="store_true", help="print the changes drawn, and do none")
    parser.add_argument("--unit", action="store_true", help="without tests/e2e")
    parser.add_argument("--minutes", type=float, help="no change is begun later than that")
    arguments = parser.parse_args()
    seed = arguments.seed if arguments.seed is not None else random.SystemRandom().randrange(10**6)
    HOME.mkdir(parents=True, exist_ok=True)
    copy_sources()
    possible = list(all_changes(arguments.only))
    chance = random.Random(seed)
    drawn = chance.sample(possible, len(possible))
    print(f"mutants: {len(possible)} changes are possible; seed {seed}", flush=True)
    if arguments.list:
        for path, number, _, what in drawn[:arguments.count]:
            print(f"{path.relative_to(TREE)}:{number + 1}: {what}")
        return 0
    tests, seen = Tests(), Seen(seed)
    begin = time.monotonic()
    for path, number, changed, what in drawn:
        late = arguments.minutes and time.monotonic() - begin > 60 * arguments.minutes
        if late or len(seen.of("killed")) + len(seen.of("survived")) >= arguments.count:
            break
        text = path.read_text("utf-8")
        lines = text.split("\n")
        original, lines[number] = lines[number], changed
        name = f"{path.relative_to(TREE)}:{number + 1}: {what}: {changed.strip()}"
        if name in seen.fate:
            continue
        path.write_text("\n".join(lines), "utf-8")
        try:
            by = killer(tests, path, not arguments.unit)
        finally:
            path.write_text(text, "utf-8")
        fate = "unfit" if by == "-" else "killed" if by else "survived"
        seen.add(name, fate, by or original.strip())
        print(f"{fate:9}{name}: {by}" if by else f"SURVIVED {name}\n    was {original.strip()}", flush=True)
    survivors, killed = seen.of("survived"), len(seen.of("killed"))
    (HOME / "survivors.txt").write_text("".join(f"{name}\n    was {was}\n" for name, was in survivors), "utf-8")
    total = killed + len(survivors)
    percent = 100 * killed / max(total, 1)
    print(f"mutants: {killed} of {total} killed ({percent:.0f} %), {len(seen.of('unfit'))} did not compile; seed {seed}")
    return 0 if percent >= TARGET else 1


if __name__ == "__main__":
    sys.exit(main())
