#!/usr/bin/env python3
"""Breaks src/ one line at a time and tells which faults the test suite does not notice.

Usage: mutate.py [COUNT], a sample of COUNT mutants, or all of them. A mutant that does not compile, or not without
warnings, is not counted; one that ran into the deadline, "hung", is noticed. Every test runs in a process namespace of
its own, so that a launcher which signals the wrong process reaches nobody else.
"""
import collections
import concurrent.futures
import os
import pathlib
import queue
import random
import re
import shutil
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent
WORKERS = os.cpu_count() + 1  # the tests wait half of their time
# Programs, their arguments, and a deadline in seconds: some five times what they take while others run.
TESTS = (("unit_test", "--gtest_filter=*", 20), ("process_test", "--gtest_filter=-*UnderFire*", 40),
         ("process_test", "--gtest_filter=*UnderFire*", 100))
CONTAINED = ["unshare", "--map-root-user", "--pid", "--fork", "--kill-child", "--mount-proc"]

# What is replaced, by what; each place on a line makes one mutant.
RULES = [(re.compile(pattern), replacement) for pattern, replacement in (
    (r"==", "!="), (r"!=", "=="), (r" < ", " <= "), (r" > ", " >= "), (r" <= ", " < "), (r" >= ", " > "),
    (r"&&", "||"), (r"\|\|", "&&"), (r"\+\+", "--"), (r"--", "++"), (r" \+ ", " - "), (r" \+= ", " -= "),
    (r"\btrue\b", "false"), (r"\bfalse\b", "true"), (r"\b(\d+)\b", lambda m: str(int(m[1]) + 1)),
    (r" \| [A-Z_]\w+", ""), (r"(?<=\()[A-Z_]\w+ \| ", ""), (r"\b(if|while) \((?!const )", r"\1 (!"),
    (r'"(?:[^"\\]|\\.)+"', lambda m: '"x' + m[0][1:]), (r"'[^\\]'", "'\\\\0'"),
    (r"\bkFree\b", "kFilling"), (r"\bkWaiting\b", "kResumed"),
    (r"\bSIG_BLOCK\b", "SIG_UNBLOCK"), (r"\bSIG_SETMASK\b", "SIG_BLOCK"), (r"\bSIGTERM\b", "SIGINT"),
    (r"\bfetch_add\b", "fetch_sub"), (r"^\s+[^/{}]*;$", ""))]

# Mutants that are no faults, by the line that they make or drop, with the reason. No test can notice them.
SAME = {
    "count.fetch_add(2);": "whoever waits only looks whether the number has changed",
    "count.fetch_sub(1);": "whoever waits only looks whether the number has changed",
    "1 ||": "who is woken looks at the condition again in any case",
    "if (number == 0) number = numbers.fetch_add(2) + 1;": "still a number of its own",
    "if (number == 0) number = numbers.fetch_add(1) - 1;": "still a number of its own; 0 is drawn again",
    "if (number == 0) number = numbers.fetch_add(1) + 2;": "the same",
    "if (number == 0) number = numbers.fetch_sub(1) + 1;": "the same",
    "dropped: FutexWait(count, seen, nullptr);": "waits busily for the same",
    "constexpr std::size_t kSlots = 65;": "no number is promised",
    "if (IsUnanswered(slot) && (next == nullptr || slot.turn <= next->turn)) next = &slot;": "no two turns are equal",
    "std::array<char, 4097> chunk;": "any size does",
    "ssize_t size = 1;": "is written before it is read",
    "constexpr std::int64_t kTooLarge = -kLowest + 2;": "too large as well",
    "::pthread_sigmask(SIG_BLOCK, nullptr, &slot.mask);": "only asks for the mask",
    "if (t_interruptedMask != nullptr) ::pthread_sigmask(SIG_BLOCK, &ownMask_, nullptr);": "the own mask is full",
    "return -2;": "no caller looks for more than a failure",
    "slot.turn = g_turns.fetch_add(2);": "the same order",
    "dropped: stopList.clear();": "the only caller passes an empty list",
    'const UniqueFd file(::open(("/proc/" + IntToString(pid) + "/cmdline").c_str(), O_RDONLY));':
        "stop mode executes no program",
}


def mutants():
    """(file, line number, mutated line) of every mutant, comments and directives left alone."""
    for path in sorted((ROOT / "src").rglob("*.[hc]*")):
        for number, line in enumerate(path.read_text().splitlines()) if path.suffix in (".h", ".cpp") else ():
            code = line.split("//")[0].rstrip()
            if not code or code.startswith("#") or "static_assert" in code or re.search("= (delete|default);", code):
                continue
            changed = {code[:m.start()] + m.expand(new) + code[m.end():] if isinstance(new, str) else
                       code[:m.start()] + new(m) + code[m.end():] for rule, new in RULES for m in rule.finditer(code)}
            for mutated in sorted(changed - {code}):
                if (mutated.strip() or "dropped: " + code.strip()) in SAME:
                    continue
                yield path.relative_to(ROOT), number, mutated


def build(tree):
    command = ["cmake", "--build", tree / "build", "--target", "unit_test", "process_test"]
    return subprocess.run(command, capture_output=True, check=False).returncode == 0


def outcome(tree):
    """Of the tests: 'noticed', 'hung' or, if all pass, 'SURVIVED'."""
    environment = {**os.environ, "GTEST_FAIL_FAST": "1"}
    for program, tests, deadline in TESTS:
        command = [*CONTAINED, tree / "build/tests" / program, tests]
        try:
            subprocess.run(command, env=environment, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                           stderr=subprocess.DEVNULL, timeout=deadline, check=True)
        except subprocess.CalledProcessError:
            return "noticed"
        except subprocess.TimeoutExpired:
            return "hung"
    return "SURVIVED"


def prepare(tree):
    """A copy of the project in `tree`, built and with its tests passing."""
    shutil.copytree(ROOT, tree, ignore=shutil.ignore_patterns("build", ".git"))
    strict = ["-D", "CMAKE_COMPILE_WARNING_AS_ERROR=ON"]
    subprocess.run(["cmake", "-S", tree, "-B", tree / "build", *strict], stdout=subprocess.DEVNULL, check=True)
    if not build(tree) or outcome(tree) != "SURVIVED":
        sys.exit("the tests do not pass without a fault")
    return tree


def verdict(trees, mutant):
    """'invalid' or the tests' outcome: what comes of one mutant, in one of the prepared trees."""
    path, number, mutated = mutant
    tree = trees.get()
    original = (tree / path).read_text()
    lines = original.splitlines()
    lines[number] = mutated
    (tree / path).write_text("\n".join(lines) + "\n")
    try:
        return outcome(tree) if build(tree) else "invalid"
    finally:
        (tree / path).write_text(original)
        trees.put(tree)


def main():
    chosen = list(mutants())
    random.Random(1).shuffle(chosen)
    chosen = chosen[:int(sys.argv[1])] if len(sys.argv) > 1 else chosen
    counts = collections.Counter()
    with tempfile.TemporaryDirectory() as scratch, concurrent.futures.ThreadPoolExecutor(WORKERS) as pool:
        trees = queue.SimpleQueue()
        for worker in range(WORKERS):
            trees.put(prepare(pathlib.Path(scratch) / str(worker)))
        for mutant, result in zip(chosen, pool.map(lambda m: verdict(trees, m), chosen)):
            counts[result] += 1
            print(f"{result:8} {mutant[0]}:{mutant[1] + 1}: {mutant[2].strip() or '(dropped)'}", flush=True)
    valid = len(chosen) - counts["invalid"]
    print(f"noticed {valid - counts['SURVIVED']} of {valid}, {counts['hung']} by hanging; the others are invalid")


main()
