#!/usr/bin/python3
"""Changes one thing at a time in the game's sources and asks the tests whether they notice.

    Tests/Mutation/mutate.py prepare [ROOM...]  builds the tests with all changes in them, each off
    Tests/Mutation/mutate.py run [ROOM...] [--sample N] [--seed S] [--again | --survivors]
    Tests/Mutation/mutate.py report [ROOM...]   what no test noticed

Debian's packages have no tool for this that knows C++20, hence this script; it needs python3-clang-14, by which it
finds statements, conditions, operators, literals and results. All changes of all files are compiled into one set of
test programs, as branches; a change costs no compilation. Each test then runs once for all changes: where it first
reaches one, the process copies itself, and the copy makes the change and runs to the end (Fork.h). Where that is
impossible, the tests that reach the change run with the variable MUTANT. Everything lies in build-mutation. Files of
the rooms that are headers are not changed.

Equivalent.txt lists the changes that no test can notice, and why; they are not run. Results are kept by what was
changed, so they outlive new lines in the sources; --survivors tries again only what no test noticed."""

import argparse, collections, concurrent.futures, json, os, random, re, resource, subprocess, sys, tempfile
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
HOME = ROOT / "build-mutation"
TREE = HOME / "tree"
BUILD = TREE / "build"
# Which test programs may notice a change in a room, the quickest first.
ROOMS = {
    "GullCore": ["GullCore_tests", "Gullwick_Game_tests"],
    "Gullwick/Feedback": ["Gullwick_Feedback_tests", "Gullwick_Game_tests"],
    "Gullwick/Game": ["Gullwick_Game_tests"],
    "Gullwick/App": ["Gullwick_App_tests", "Session_tests"],
}
# A source that every test program has.
COMMON = "Sources/Engine/Log/Log.cpp"
# Programs that start others or threads cannot be copied.
WHOLE = {"Session_tests"}
SWAPPED = {"<": "<=", "<=": "<", ">": ">=", ">=": ">", "==": "!=", "!=": "==", "+": "-", "-": "+", "*": "/",
           "/": "*", "&&": "||", "||": "&&", "+=": "-=", "-=": "+=", "*=": "/=", "/=": "*=", "%": "*"}


def programs(options):
    return list(dict.fromkeys(program for room in options.rooms or ROOMS for program in ROOMS[room]))


class Site:
    """A place in a source that can be changed."""

    def __init__(self, start, end, kind, before, after, was, now):
        self.start, self.end, self.kind, self.was, self.now = start, end, kind, was, now
        self.before, self.after = before, after  # text around what stands there, with "@" for the number


def flat(text):
    return " ".join(text.split())


def sites_of(path, arguments):
    import clang.cindex as ci
    Kind = ci.CursorKind
    source = path.read_bytes()
    text = lambda cursor: source[cursor.extent.start.offset:cursor.extent.end.offset].decode()
    unit = ci.Index.create().parse(str(path), args=arguments)
    sites = []

    def add(cursor, kind, before, after, now):
        was = text(cursor)
        if was and "//" not in was and "/*" not in was:
            sites.append(Site(cursor.extent.start.offset, cursor.extent.end.offset, kind, before, after, flat(was), now))

    def negate(cursor, kind):
        if inner(cursor).kind == Kind.BINARY_OPERATOR and (operator(inner(cursor)) or ("",))[0] in ("==", "!="):
            return  # its operator is swapped
        add(cursor, kind, "(::mutation::is(@) != static_cast<bool>(", "))", "not (" + flat(text(cursor)) + ")")

    def inner(cursor):
        """Without the wrappers that have no text of their own."""
        while cursor.kind == Kind.UNEXPOSED_EXPR:
            below = [c for c in cursor.get_children()]
            if len(below) != 1 or text(below[0]) != text(cursor):
                break
            cursor = below[0]
        return cursor

    def statement(cursor):
        cursor = inner(cursor)
        if cursor.kind in (Kind.CALL_EXPR, Kind.UNEXPOSED_EXPR, Kind.COMPOUND_ASSIGNMENT_OPERATOR, Kind.UNARY_OPERATOR,
                           Kind.BINARY_OPERATOR, Kind.CONDITIONAL_OPERATOR):
            add(cursor, "dropped", "if (::mutation::is(@)) {} else ", "", "")

    def operator(cursor):
        below = list(cursor.get_children())
        if len(below) != 2:
            return None
        between = source[below[0].extent.end.offset:below[1].extent.start.offset].decode()
        found = re.fullmatch(r"[\s()]*?\s*([-+*/%<>=!&|^]+)\s*[\s(]*", between)
        return (found.group(1), below[0].extent.end.offset + found.start(1)) if found else None

    def visit(cursor, parent):
        if cursor.location.file and cursor.location.file.name != str(path):
            return
        kind = cursor.kind
        if kind in (Kind.STATIC_ASSERT, Kind.ENUM_DECL, Kind.TEMPLATE_TYPE_PARAMETER, Kind.TYPE_REF):
            return
        if kind in (Kind.FUNCTION_DECL, Kind.CXX_METHOD, Kind.FUNCTION_TEMPLATE):
            head = source[cursor.extent.start.offset:cursor.extent.end.offset].decode().split("{")[0]
            if re.search(r"\b(constexpr|consteval)\b", head):
                return
        children = list(cursor.get_children())
        if kind == Kind.COMPOUND_STMT:
            for child in children:
                statement(child)
        if kind == Kind.IF_STMT and "constexpr" in text(cursor)[:14]:
            for child in children[1:]:
                visit(child, cursor)
            return
        if kind in (Kind.IF_STMT, Kind.WHILE_STMT, Kind.CONDITIONAL_OPERATOR) and children:
            if children[0].kind.is_expression():
                negate(children[0], "condition")
            if kind != Kind.CONDITIONAL_OPERATOR:
                for child in children[1:]:
                    statement(child)
        if kind in (Kind.FOR_STMT, Kind.CXX_FOR_RANGE_STMT) and children:
            statement(children[-1])
        if kind == Kind.CASE_STMT:
            for child in children[1:]:
                statement(child)
                visit(child, cursor)
            return
        if kind == Kind.DEFAULT_STMT:
            for child in children:
                statement(child)
        if kind in (Kind.BINARY_OPERATOR, Kind.COMPOUND_ASSIGNMENT_OPERATOR):
            found = operator(cursor)
            pointer = cursor.type.get_canonical().kind == ci.TypeKind.POINTER
            if found and found[0] in SWAPPED and not pointer:
                sign, place = found
                start, end = cursor.extent.start.offset, cursor.extent.end.offset
                other = flat(source[start:place].decode() + SWAPPED[sign] + source[place + len(sign):end].decode())
                add(cursor, "operator", "(::mutation::is(@) ? (" + other + ") : (", "))", other)
        if kind in (Kind.INTEGER_LITERAL, Kind.FLOATING_LITERAL):
            if re.fullmatch(r"[\d.'a-fA-FxXuUlL+e-]+", text(cursor)):
                value = text(cursor)
                add(cursor, "constant", "(::mutation::is(@) ? " + value + " + 1 : ", ")", value + " + 1")
        if kind == Kind.CXX_BOOL_LITERAL_EXPR and text(cursor) in ("true", "false"):
            add(cursor, "constant", "(::mutation::is(@) != ", ")", "false" if text(cursor) == "true" else "true")
        if kind == Kind.RETURN_STMT and children and children[0].kind != Kind.INIT_LIST_EXPR:
            result = children[0].type.get_canonical()
            value = flat(text(children[0]))
            if value in ("0", "0.0", "std::nullopt", '""', "{}"):
                return
            if result.kind == ci.TypeKind.BOOL and inner(children[0]).kind != Kind.CXX_BOOL_LITERAL_EXPR:
                negate(children[0], "result")
            elif (ci.TypeKind.CHAR_U.value <= result.kind.value <= ci.TypeKind.LONGDOUBLE.value
                  or "std::optional" in result.spelling or "basic_string<" in result.spelling) and "{" not in value:
                add(children[0], "result", "(::mutation::is(@) ? std::decay_t<decltype(" + value + ")>{} : (", "))", "{}")
        if kind == Kind.LAMBDA_EXPR:
            children = [c for c in children if c.kind == Kind.COMPOUND_STMT]
        for child in children:
            visit(child, cursor)

    for cursor in unit.cursor.get_children():
        visit(cursor, None)
    unique = {}
    for site in sites:
        unique.setdefault((site.start, site.end, site.kind, site.now), site)
    return source, sorted(unique.values(), key=lambda s: (s.start, -s.end, s.kind != "dropped"))


def rendered(source, sites):
    """The source with a branch at each site. The lines keep their numbers."""
    def part(start, end, inside):
        out, at = "", start
        while inside:
            site, inside = inside[0], inside[1:]
            within = [s for s in inside if s.end <= site.end]
            inside = [s for s in inside if s.end > site.end]
            out += source[at:site.start].decode() + site.before.replace("@", str(site.number))
            out += part(site.start, site.end, within) + site.after
            at = site.end
        return out + source[at:end].decode()
    return part(0, len(source), sites)


def put(path, contents):
    """Leaves a file alone that is right already, so that nothing is compiled for nothing."""
    if not path.exists() or path.read_bytes() != contents:
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(contents)


def write(path, source, sites):
    """PATH includes the changed source, as a system header because there warnings are no errors."""
    lines = rendered(source, [site for site in sites if site.alive]).split("\n")
    for i, line in enumerate(lines):
        if "::mutation" in line:  # a constant that the environment may change
            lines[i] = line.replace("constexpr ", "const ", 1)
    changed = path.with_suffix(".mutants.h")
    put(changed, ("#pragma GCC system_header\n#line 1\n" + "\n".join(lines)).encode())
    put(path, f'#include "{TREE}/Tests/Mutation/Mutant.h"\n#include <type_traits>\n#include "{changed}"\n'.encode())


def changes(name):
    path = Path(name)
    return path.suffix == ".cpp" and path.name != "main.cpp" and str(path.parent).removeprefix("Sources/") in ROOMS


def prepare(options):
    names = subprocess.check_output(["git", "ls-files", "-co", "--exclude-standard"], cwd=ROOT, text=True).split("\n")
    for name in filter(None, names):
        source = ROOT / name
        if source.is_file() and not changes(name):
            more = f'#include "{TREE}/Tests/Mutation/Fork.h"\n' if name == COMMON else ""
            put(TREE / name, source.read_bytes() + more.encode())
            (TREE / name).chmod(source.stat().st_mode)
    for name in filter(changes, names):
        if not (TREE / name).exists():
            put(TREE / name, b"")
    subprocess.run(["cmake", "-S", TREE, "-B", BUILD, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Release", "-DGULL_TESTS=ON"],
                   check=True, stdout=subprocess.DEVNULL)
    commands = {c["file"]: c["command"] for c in json.loads((BUILD / "compile_commands.json").read_text())}
    files, number, alike = {}, 0, collections.Counter()
    for name in sorted(filter(changes, names)):
        path = TREE / name
        if str(path) in commands:
            words = commands[str(path)].split()
            arguments = ["-std=c++20"] + [w for i, w in enumerate(words) if w.startswith(("-I", "-D"))]
            arguments += [w for i, w in enumerate(words) for w in (words[i:i + 2] if w == "-isystem" else [])]
            source, sites = sites_of(ROOT / name, [a.replace('\\"', '"') for a in arguments])
            for site in sites:
                number += 1
                site.number, site.alive, site.room = number, True, str(Path(name).parent.relative_to("Sources"))
                site.line = source[:site.start].count(b"\n") + 1
                what = f"{Path(name).name} {site.kind} {site.was} -> {site.now}"
                alike[what] += 1
                site.text = flat(source.split(b"\n")[site.line - 1].decode())
                site.key = f"{what} #{alike[what]}"
            files[path] = (source, sites)
            write(path, source, sites)
    print(number, "changes in", len(files), "files")
    targets = programs(options)
    for attempt in range(40):
        done = subprocess.run(["ninja", "-C", BUILD, "-k", "0", "-j", str(options.jobs), *targets], capture_output=True, text=True)
        if done.returncode == 0:
            break
        bad = collections.defaultdict(set)
        for name, line in re.findall(r"^([^\s:]+)\.mutants\.h:(\d+):\d+: (?:error|note)", done.stdout, re.M):
            bad[Path(name).with_suffix(".cpp")].add(int(line))
        lost = 0
        for path, lines in bad.items():
            if path not in files:
                continue
            source, sites = files[path]
            hit = [s for s in sites if s.alive
                   and any(s.line <= l <= s.line + source[s.start:s.end].count(b"\n") for l in lines)]
            hit = [s for s in hit if s.line in lines] or hit
            for site in hit:
                site.alive = False
                lost += 1
            write(path, source, sites)
        print("not compiled:", lost)
        if not lost:
            sys.exit(done.stdout[-4000:])
    else:
        sys.exit("it does not compile")
    catalogue = [{"number": s.number, "key": s.key, "room": s.room, "file": str(path.relative_to(TREE)), "line": s.line, "text": s.text,
                  "kind": s.kind, "was": s.was, "now": s.now} for path, (_, sites) in files.items()
                 for s in sites if s.alive]
    (HOME / "catalogue.json").write_text(json.dumps(catalogue, indent=0))
    print(len(catalogue), "changes are in the test programs")
    trace(options)


def environment(**more):
    own = {k: v for k, v in os.environ.items() if not k.startswith(("GULLWICK_", "DISPLAY", "WAYLAND"))}
    for name in ("CONFIG", "DATA", "STATE"):
        own[f"XDG_{name}_HOME"] = str(HOME / "home" / name.lower())
    return own | {"LIBGL_ALWAYS_SOFTWARE": "1"} | more


def binary(program):
    return BUILD / "Tests" / program


def ran(program, tests, cpu, **more):
    """Whether the tests pass. A change that never ends is stopped by its processor time."""
    limit = lambda: resource.setrlimit(resource.RLIMIT_CPU, (cpu, cpu + 2))
    command = [binary(program), "--gtest_filter=" + ":".join(tests), "--gtest_fail_fast", "--gtest_brief=1"]
    try:
        return subprocess.run(command, cwd=TREE, env=environment(**more), preexec_fn=limit, timeout=600 + 20 * cpu,
                              stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, stdin=subprocess.DEVNULL).returncode == 0
    except subprocess.TimeoutExpired:
        return False


def trace(options):
    """Which tests reach which places, and how long each test takes."""
    reach, cost = collections.defaultdict(lambda: collections.defaultdict(list)), {}
    for program in programs(options):
        listed = subprocess.check_output([binary(program), "--gtest_list_tests"], text=True, env=environment(), cwd=TREE)
        suite = ""
        for line in listed.splitlines():
            if not line.startswith(" "):
                suite = line.split()[0]
                continue
            test = suite + line.split()[0]
            notes = HOME / "reached"
            notes.unlink(missing_ok=True)
            before = resource.getrusage(resource.RUSAGE_CHILDREN)
            if not ran(program, [test], 300, MUTANT_TRACE=str(notes)):
                print("fails without any change, so it is not used:", program, test)
                continue
            after = resource.getrusage(resource.RUSAGE_CHILDREN)
            cost[test] = after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime
            for number in set(notes.read_text().split()) if notes.exists() else ():
                reach[number][program].append(test)
    (HOME / "reach.json").write_text(json.dumps({"reach": reach, "cost": cost}))


def copies(program, test, numbers, seconds):
    """What copies of one test's process, each with another change, said: "noticed", "passed" or "skipped" by number."""
    with tempfile.TemporaryDirectory() as folder:
        wanted, results, own = Path(folder) / "wanted", Path(folder) / "results", Path(folder) / "temporary"
        own.mkdir()
        wanted.write_text("\n".join(map(str, numbers)))
        control = ran(program, [test], 3000, TMPDIR=str(own), MUTANT_TRY=str(wanted), MUTANT_RESULTS=str(results),
                      MUTANT_SECONDS=str(int(seconds)))
        said = results.read_text().splitlines() if control and results.exists() else []
    verdicts = {int(number): verdict for verdict, number in map(str.split, said)}
    return {} if 0 in verdicts else verdicts


class Trial:
    """All changes against all tests."""

    def __init__(self, changes, reach, cost):
        self.left = {change["number"]: change for change in changes}
        self.reach, self.cost = reach, cost
        self.breadth = collections.Counter(test for programs in reach.values() for tests in programs.values()
                                           for test in tests)
        self.whole = collections.defaultdict(list)  # by number: tests that have to run for this change alone

    def reaches(self, number, program, test):
        return test in self.reach.get(str(number), {}).get(program, ())

    def split(self, program, test):
        """Tries all changes that are left with one test; returns those that it noticed."""
        numbers = [n for n in list(self.left) if self.reaches(n, program, test)]
        verdicts = {}
        if numbers and program not in WHOLE:
            verdicts = copies(program, test, numbers, 4 * self.cost[test] + 3)
        for number in numbers:
            if verdicts.get(number, "skipped") == "skipped":
                self.whole[number].append((program, test))
        return [n for n in numbers if verdicts.get(n) == "noticed"]

    def alone(self, number):
        """The program of a test that notices the change, of those that could not be split."""
        for program in programs_of(self.left[number]):
            tests = sorted((t for p, t in self.whole[number] if p == program), key=lambda test: self.breadth[test])
            for some in filter(None, (tests[:3], tests[3:10], tests[10:])):
                if not ran(program, some, int(10 + 4 * sum(self.cost[t] for t in some)), MUTANT=str(number)):
                    return program
        return ""


def programs_of(change):
    return ROOMS[change["room"]]


def latest():
    """The last result of each change."""
    results = HOME / "results.jsonl"
    lines = results.read_text().splitlines() if results.exists() else []
    return {result["key"]: result for result in map(json.loads, lines)}


def run(options):
    catalogue = json.loads((HOME / "catalogue.json").read_text())
    notes = json.loads((HOME / "reach.json").read_text())
    if options.again:
        (HOME / "results.jsonl").unlink(missing_ok=True)
    known, excuses = latest(), equivalent()
    done = {key for key, result in known.items() if result["verdict"] == "noticed" or not options.survivors}
    chosen = [c for c in catalogue if not options.rooms or c["room"] in options.rooms]
    random.Random(options.seed).shuffle(chosen)
    chosen = [c for c in chosen[:options.sample or None] if c["key"] not in done]
    if options.survivors:
        chosen = [c for c in chosen if c["key"] in known]
    trial = Trial([c for c in chosen if not excused(c, excuses)], notes["reach"], notes["cost"])
    with (HOME / "results.jsonl").open("a") as out, concurrent.futures.ThreadPoolExecutor(options.jobs) as pool:
        def note(change, verdict, by=""):
            trial.left.pop(change["number"], None)
            out.write(json.dumps(change | {"verdict": verdict, "by": by}) + "\n")
            out.flush()
            if verdict in ("survived", "unreached"):
                print(describe(change | {"verdict": verdict}), flush=True)
        for change in chosen:
            if change["number"] not in trial.left:
                note(change, "equivalent")
        jobs = {}
        for program in programs(options):
            tests = {t for n in trial.left for t in notes["reach"].get(str(n), {}).get(program, ())}
            for test in sorted(tests, key=lambda test: trial.cost[test]):
                jobs[pool.submit(trial.split, program, test)] = test
        for job in concurrent.futures.as_completed(jobs):
            for number in job.result():
                if number in trial.left:
                    note(trial.left[number], "noticed", jobs[job])
        jobs = {pool.submit(trial.alone, number): change for number, change in trial.left.items()}
        for job in concurrent.futures.as_completed(jobs):
            reached = any(notes["reach"].get(str(jobs[job]["number"]), {}).get(p) for p in programs_of(jobs[job]))
            note(jobs[job], "noticed" if job.result() else "survived" if reached else "unreached", job.result())
    report(options)


def describe(result):
    return (f'{result["file"]}:{result["line"]} {result["verdict"]}, {result["kind"]}: {result["was"]}'
            + (f' -> {result["now"]}' if result["now"] else "")
            + (f'   in  {result["text"]}' if result["kind"] == "constant" else ""))


def equivalent():
    path = ROOT / "Tests/Mutation/Equivalent.txt"
    lines = [line for line in path.read_text().splitlines() if line and not line.startswith(("#", " "))]
    return [[part.strip() for part in (line + " ").split(" | ")] for line in lines]


def excused(change, excuses):
    return any([Path(change["file"]).name, change["was"], change["now"]] == excuse[:3]
               and all(part in change["text"] for part in excuse[3:]) for excuse in excuses)


def report(options):
    places = collections.Counter(c["room"] for c in json.loads((HOME / "catalogue.json").read_text()))
    results = [r for r in latest().values() if not options.rooms or r["room"] in options.rooms]
    excuses = equivalent()
    table = collections.defaultdict(collections.Counter)
    for result in results:
        if result["verdict"] != "noticed" and excused(result, excuses):
            result["verdict"] = "equivalent"
        table[result["room"]][result["verdict"]] += 1
    for result in sorted(results, key=lambda r: (r["file"], r["line"])):
        if result["verdict"] in ("survived", "unreached"):
            print(describe(result))
    for room, counts in table.items():
        print(f"{room}: {sum(counts.values())} of {places[room]} changes, "
              + ", ".join(f"{n} {v}" for v, n in sorted(counts.items())))


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("action", choices=["prepare", "trace", "run", "report"])
    parser.add_argument("rooms", nargs="*")
    parser.add_argument("--sample", type=int, help="this many changes, drawn by the seed")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--jobs", type=int, default=2)
    parser.add_argument("--again", action="store_true", help="forget earlier results")
    parser.add_argument("--survivors", action="store_true", help="only what no test has noticed so far")
    options = parser.parse_args()
    {"prepare": prepare, "trace": trace, "run": run, "report": report}[options.action](options)


main()
