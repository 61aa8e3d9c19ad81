#!/usr/bin/env python3
"""Makes faults in the code, one at a time, and tells which of them no test notices.

    tools/mutate/mutate.py --count 120 --seed 1 --results faults.jsonl
    tools/mutate/mutate.py --report faults.jsonl

The faults are made in a copy of the tree (--copy), which is brought up to date at the start and built without optimization:
compiling and linking is what a fault costs. One that is noticed costs some three seconds, one that isn't 20: the tests that
wait on real time come last.

--count N       faults that compile, spread over the folders of src/ and apps/ by their lines of code, two at least
--seed N        the same seed draws the same faults from the same code
--only GLOB     draws from these files alone, e.g. 'src/link/*'
--acts          draws no words, no layout and no painting
--widest N      passes over files that more than N objects are compiled from: a central header rebuilds everything
--suite REGEX   runs the suites of these names alone
--jobs N        compiles N files at once
--every-test    does not stop at the first failing test: each fault is told with all tests that notice it (the slow suites
                run only if no other fails); from these the report tells which tests notice what no other does
--show N        prints N faults of the draw and makes none
--results FILE  one JSON object a line; those that stand there are not made again, so a broken-off run goes on
--again         makes the survivors of the results once more, at the same places: were new tests worth it?
--report FILE   tells the results alone

Exit status 1 if a fault survived that harmless.txt, beside this file, does not name.
"""
import argparse
import collections
import fnmatch
import json
import os
import random
import re
import resource
import signal
import subprocess
import sys
import tempfile
import time

TREE = os.path.dirname(os.path.dirname(os.path.dirname(os.path.realpath(__file__))))
HARMLESS = os.path.join(os.path.dirname(os.path.realpath(__file__)), 'harmless.txt')
BUILD_LIMIT, MEMORY_LIMIT, OUTPUT_LIMIT = 1500, 4 << 30, 64 << 20  # s, bytes
SLOW = 1.0  # s: a suite that takes longer waits on real time
LOOKS = ('text', 'layout', 'painting')  # kinds of faults that are for the eye alone

# --- What can be wrong -----------------------------------------------------------------------------------------------

Mutant = collections.namedtuple('Mutant', 'file line kind start end new')

TOKEN = re.compile(r'''(?P<comment>//[^\n]*|/\*.*?\*/)|(?P<raw>R"(?P<d>[^(]*)\(.*?\)(?P=d)")|(?P<string>"(?:\\.|[^"\\\n])*")
    |(?P<char>'(?:\\.|[^'\\\n])+')|(?P<directive>^[ ]*\#[^\n]*)|(?P<number>\b(?:0[xX][0-9a-fA-F']+|\d[\d']*(?:\.\d+)?))
    |(?P<word>[A-Za-z_]\w*)|(?P<operator><<=|>>=|[-+*/%&|^=!<>]=|&&|\|\||<<|>>|\+\+|--|->|::|[-+*/%&|^<>=!?:;,.(){}\[\]~])''',
                   re.X | re.S | re.M)
SWAPS = {'==': '!=', '!=': '==', '<': '<=', '<=': '<', '>': '>=', '>=': '>', '&&': '||', '||': '&&', '+': '-', '-': '+',
         '*': '/', '/': '*', '%': '*', '&': '|', '|': '&', '<<': '>>', '>>': '<<', '+=': '-=', '-=': '+='}
# Of a control: left, top, width, height in twips, or, of one in a column, left and width.
PLACE = re.compile(r'\{\s*-?\d+,\s*-?\d+,\s*-?\d+,\s*-?\d+\}|"\w+(?:Lbl|Txt|Chk|Lst)",\s*\d+,\s*\d+')
ROW = re.compile(r'^\s*\{.*,.*,.*\}')
PAINTING_FILES = re.compile(r'apps/desktop/(Drawing|FocusRing|ProgramStyle|TextBlock|Theme)\.')
PAINTING = re.compile(r'\b(?:paint(?:Event)?|Draw\w*|draw[A-Z]\w*|FocusRing|LinePlace|Alignment|\w*Color\w*)\([^;{}]*\) (?:const )?(?:override )?\{')
EMPTY = {'{}', '0', 'nullptr', 'std::nullopt', 'QString()'}  # what {} says as well
NO_STATEMENT = {'return', 'using', 'namespace', 'class', 'struct', 'public', 'private', 'protected', 'const', 'constexpr',
                'static', 'auto', 'template', 'enum', 'friend', 'case', 'break', 'continue', 'default', 'extern', 'explicit',
                'virtual', 'operator', 'throw', 'else', 'for', 'while', 'if', 'do', 'switch', 'try', 'catch', 'delete'}


def tokens_of(text):
    found = [(m.lastgroup if m.lastgroup != 'd' else 'raw', m.group(), m.start(), m.end()) for m in TOKEN.finditer(text)]
    return [t for t in found if t[0] not in ('comment', 'directive')]


def closing(tokens, at):
    """The index of the bracket that closes the one at `at`."""
    depth = 0
    for i in range(at, len(tokens)):
        depth += tokens[i][1] in '([{' if tokens[i][0] == 'operator' else 0
        depth -= tokens[i][1] in ')]}' if tokens[i][0] == 'operator' else 0
        if depth == 0:
            return i
    return len(tokens) - 1


def other_letter(text, at):
    first = 'a' if text[at].islower() else 'A'
    return chr((ord(text[at]) - ord(first) + 1) % 26 + ord(first))


def is_expression(tokens, at):
    """A statement begins there that declares nothing."""
    if tokens[at][1] in ('++', '--', '*'):
        return True
    if tokens[at][0] != 'word' or tokens[at][1] in NO_STATEMENT:
        return False
    i = at + 1
    while tokens[i][1] == '::':
        i += 2
    if tokens[i][1] == '<':
        return False
    return tokens[i][0] == 'operator' and not (tokens[i][1] in '&*' and tokens[i + 1][0] == 'word')


def painting_of(path, text, tokens):
    """Where the program paints: places in the text, from and to."""
    if PAINTING_FILES.match(path):
        return [(0, len(text))]
    opened = {start: i for i, (_, _, start, _) in enumerate(tokens)}
    ends = [m.end() - 1 for m in PAINTING.finditer(text) if path.startswith('apps/desktop/') and m.end() - 1 in opened]
    return [(begin, tokens[closing(tokens, opened[begin])][2]) for begin in ends]


def mutants_of(path, text):
    tokens = tokens_of(text)
    lines, places = text.split('\n'), [m.span() for m in PLACE.finditer(text)]
    painting = painting_of(path, text, tokens)
    starts = [0]
    for line in lines:
        starts.append(starts[-1] + len(line) + 1)
    number_of_line = {}
    for number in range(len(lines)):
        for at in range(starts[number], starts[number + 1]):
            number_of_line[at] = number + 1

    def mutant(kind, start, end, new):
        number = number_of_line[start]
        if kind in ('constant', 'text', 'bool') and ROW.match(lines[number - 1]):
            kind = 'cell'
        if any(begin < start < end for begin, end in painting):
            kind = 'painting'
        return Mutant(path, number, kind, start, end, new)

    for i, (kind, token, start, end) in enumerate(tokens[:-1]):
        following, previous = tokens[i + 1], tokens[i - 1] if i else ('', '', 0, 0)
        if kind == 'operator' and token in SWAPS and text[start - 1] == ' ' and text[end] in ' \n':
            yield mutant('operator', start, end, SWAPS[token])
        elif kind == 'operator' and token in ('++', '--'):
            yield mutant('operator', start, end, '--' if token == '++' else '++')
        elif kind == 'number':
            in_place = any(a < start < b for a, b in places)
            plain = token.replace("'", '')
            if re.fullmatch(r'0[xX][0-9a-fA-F]+|\d+', plain):
                value = int(plain, 0 if plain[:2].lower() == '0x' else 10)
                for step in (120,) if in_place else (1, -1):  # a raster of the layout
                    if value + step >= 0:
                        new = hex(value + step) if plain[:2].lower() == '0x' else str(value + step)
                        yield mutant('layout' if in_place else 'constant', start, end, new)
        elif kind == 'word' and token in ('true', 'false'):
            yield mutant('bool', start, end, 'false' if token == 'true' else 'true')
        elif kind == 'string':
            if len(re.findall(r'\b' + re.escape(token[1:-1]) + r'\b', lines[number_of_line[start] - 1])) > 1:
                continue  # the name of the control that is declared here
            hidden = [m.span() for m in re.finditer(r'\\(x[0-9A-Fa-f]+|.)', token)]
            for at, letter in enumerate(token):
                if letter.isascii() and letter.isalpha() and not any(a <= at < b for a, b in hidden):
                    yield mutant('text', start + at, start + at + 1, other_letter(token, at))
        elif kind == 'word' and token in ('if', 'while') and following[1] == '(':
            close = tokens[closing(tokens, i + 1)]
            yield mutant('condition', following[3], close[2], '!(' + text[following[3]:close[2]] + ')')
        elif kind == 'word' and token == 'return' and following[1] != ';':
            last = i + 1
            while tokens[last][1] != ';':
                last = closing(tokens, last) + 1 if tokens[last][1] in ('(', '{', '[') else last + 1
            value = text[following[2]:tokens[last][2]]
            if value not in ('true', 'false'):
                yield mutant('return', following[2], tokens[last][2], '!(' + value + ')')
                if value not in EMPTY:
                    yield mutant('return', following[2], tokens[last][2], '{}')
        if path.endswith('.cpp') and previous[1] in (';', '{', '}', ')', 'else', ':') and is_expression(tokens, i):
            last = i
            while last < len(tokens) - 1 and tokens[last][1] not in (';', '}', ')', ']', ':'):
                last = closing(tokens, last) + 1 if tokens[last][1] in ('(', '{', '[') else last + 1
            if tokens[last][1] == ';' and tokens[last - 1][1] not in ('const', 'override', 'default', 'delete'):
                yield mutant('statement', start, tokens[last][2], '')
        if kind == 'operator' and token == ',' and ROW.match(lines[number_of_line[start] - 1]):
            swap = re.match(r'(\s*)([^,{}()]+)', text[end:starts[number_of_line[start]]])
            before = re.search(r'([^,{}()\s][^,{}()]*)$', text[starts[number_of_line[start] - 1]:start])
            if swap and before and swap.group(2).strip() != before.group(1):
                new = swap.group(2).strip() + ',' + swap.group(1) + before.group(1)
                yield mutant('cell', start - len(before.group(1)), end + len(swap.group(1)) + len(swap.group(2).rstrip()), new)


# --- Which ones are made ---------------------------------------------------------------------------------------------

def code_lines(text):
    return sum(1 for line in text.split('\n') if line.strip() and not line.strip().startswith('//'))


def draw(tree, only, count, seed, harmless, is_built=lambda path: True):
    """For each folder how many mutants it gets, and its mutants in the order in which they are made. A file that only
    another system builds gets none."""
    sizes, found = collections.Counter(), collections.defaultdict(lambda: collections.defaultdict(list))
    for top in ('src', 'apps'):
        for folder, _, names in sorted(os.walk(os.path.join(tree, top))):
            for name in sorted(names):
                path = os.path.relpath(os.path.join(folder, name), tree)
                if not name.endswith(('.cpp', '.h')) or not fnmatch.fnmatch(path, only) or not is_built(path):
                    continue
                text = read(tree, path)
                sizes[os.path.dirname(path)] += code_lines(text)
                for mutant in mutants_of(path, text):
                    found[os.path.dirname(path)][path, mutant.line].append(mutant)
    shares, orders = {}, {}
    for folder, lines in sorted(found.items()):
        chance = random.Random(f'{seed} {folder}')
        shares[folder] = max(2, round(count * sizes[folder] / sum(sizes.values())))
        order = sorted(lines)
        chance.shuffle(order)
        drawn = []
        for line in order:  # of each line one kind, and of it one place
            kind = chance.choice(sorted({m.kind for m in lines[line]}))
            drawn.append(chance.choice([m for m in lines[line] if m.kind == kind]))
        orders[folder] = [m for m in drawn if not harmless.names(m.file, *lines_of(read(tree, m.file), m))]
    return shares, orders


# --- Which ones are none ---------------------------------------------------------------------------------------------

class Harmless:
    """Faults that change nothing, or nothing that a test should hold: rows `file: line as it stands => line with the
    fault`, blanks at their ends aside. `*` for both lines stands for every fault in the files of that glob."""

    def __init__(self):
        self.rows, self.globs = set(), []
        for row in read(TREE, HARMLESS).split('\n'):
            if not row or row.startswith('#'):
                continue
            file, lines = row.split(': ', 1)
            before, after = lines.split(' => ', 1)
            if before == after == '*':
                self.globs.append(file)
                continue
            self.rows.add((file, before, after))
            if before not in (line.strip() for line in read(TREE, file).split('\n')):
                print(f'{HARMLESS} names a line that is gone: {file}: {before}', file=sys.stderr)

    def names(self, file, before, after):
        return (file, before, after) in self.rows or any(fnmatch.fnmatch(file, glob) for glob in self.globs)


def read(tree, path):
    with open(os.path.join(tree, path), encoding='latin-1') as file:
        return file.read()


def lines_of(text, mutant):
    """The line as it stands and with the fault."""
    mutated = text[:mutant.start] + mutant.new + text[mutant.end:]
    return text.split('\n')[mutant.line - 1].strip(), mutated.split('\n')[mutant.line - 1].strip()


# --- Building and testing --------------------------------------------------------------------------------------------

def bring_up_to_date(copy):
    """Files that are the same keep their time, so that they aren't compiled again."""
    listed = subprocess.run(['git', 'ls-files', '-z', '--cached', '--others', '--exclude-standard'], cwd=TREE, check=True,
                            capture_output=True).stdout.decode().split('\0')
    wanted = {path for path in listed if path and os.path.isfile(os.path.join(TREE, path))}
    for folder, folders, names in os.walk(copy):
        folders[:] = [name for name in folders if os.path.join(folder, name) != os.path.join(copy, 'build')]
        for name in names:
            if os.path.relpath(os.path.join(folder, name), copy) not in wanted:
                os.remove(os.path.join(folder, name))
    for path in wanted:
        source, target = os.path.join(TREE, path), os.path.join(copy, path)
        content = open(source, 'rb').read()
        if os.path.exists(target) and open(target, 'rb').read() == content:
            continue
        os.makedirs(os.path.dirname(target), exist_ok=True)
        open(target, 'wb').write(content)
        os.chmod(target, os.stat(source).st_mode)
    subprocess.run(['cmake', '--preset', 'release', '-DVK32_BENCH=OFF', '-DCMAKE_CXX_FLAGS_RELEASE=-O0 -g0 -DNDEBUG', '-S', copy],
                   cwd=copy, check=True, stdout=subprocess.DEVNULL)


Program = collections.namedtuple('Program', 'name command environment folder')
Suite = collections.namedtuple('Suite', 'program name file seconds')


class Tests:
    """The suites of the test programs that ctest knows, with the file and the time of each. Every suite runs in a process
    of its own, with a limit of time and memory."""

    def __init__(self, copy, wanted, jobs):
        self.copy, self.jobs = os.path.realpath(copy), jobs
        self.build_folder = os.path.join(self.copy, 'build', 'release')
        self.suites = []
        self.file_of = {}  # of a test: a suite may be spread over files
        if self.build([]) is None:
            sys.exit('The code does not build as it stands.')
        os.environ['CCACHE_READONLY'] = '1'  # it gives back what is put right, and keeps no fault
        told = subprocess.run(['ctest', '--test-dir', self.build_folder, '--show-only=json-v1'], capture_output=True, check=True)
        commands = []
        for test in json.loads(told.stdout)['tests']:
            properties = {p['name']: p['value'] for p in test['properties']}
            environment = dict(setting.split('=', 1) for setting in properties.get('ENVIRONMENT', [])
                               if not setting.startswith('GTEST_'))  # a program that is tested in parts runs whole
            built = [part for part in test['command'] if part.startswith(self.build_folder)]  # it may be started by another
            if built and test['command'] not in commands:
                commands.append(test['command'])
                folder = properties.get('WORKING_DIRECTORY', self.build_folder)
                self.find_suites(Program(os.path.basename(built[-1]), test['command'], environment, folder), wanted)

    def find_suites(self, program, wanted):
        with tempfile.NamedTemporaryFile() as report:
            self.start(program, ['--gtest_output=json:' + report.name], 600)
            for suite in json.load(open(report.name))['testsuites']:
                if suite.get('failures'):
                    sys.exit(f'{suite["name"]} fails on the code as it stands.')
                for test in suite['testsuite']:
                    file = os.path.relpath(os.path.join(self.build_folder, test['file']), self.copy)
                    self.file_of[suite['name'] + '.' + test['name']] = file
                if re.search(wanted, suite['name']):
                    self.suites.append(Suite(program, suite['name'], file, float(suite['time'][:-1])))

    def build(self, targets):
        """Whether something was built; None if it could not be."""
        try:
            done = subprocess.run(['ninja', '-C', self.build_folder, f'-j{self.jobs}', *targets], capture_output=True,
                                  timeout=BUILD_LIMIT, check=True)
            return b'no work to do' not in done.stdout
        except (subprocess.TimeoutExpired, subprocess.CalledProcessError):
            return None

    def users(self):
        """For each file, how many objects are compiled from it."""
        deps = subprocess.run(['ninja', '-C', self.build_folder, '-t', 'deps'], capture_output=True, text=True).stdout
        base = os.path.realpath(self.build_folder)
        files = (line.strip() for line in deps.split('\n') if line.startswith(' '))
        return collections.Counter(os.path.normpath(os.path.join(base, file)) for file in files)

    def start(self, program, arguments, limit):
        """The output, and whether all went well. What it has started ends with it."""

        def bound():
            resource.setrlimit(resource.RLIMIT_AS, (MEMORY_LIMIT, MEMORY_LIMIT))
            resource.setrlimit(resource.RLIMIT_FSIZE, (OUTPUT_LIMIT, OUTPUT_LIMIT))
            resource.setrlimit(resource.RLIMIT_CORE, (0, 0))

        with tempfile.TemporaryFile() as output:
            process = subprocess.Popen([*program.command, *arguments], stdout=output, stderr=subprocess.STDOUT,
                                       stdin=subprocess.DEVNULL, start_new_session=True, preexec_fn=bound, cwd=program.folder,
                                       env={**os.environ, **program.environment})
            try:
                well = process.wait(limit) == 0
            except subprocess.TimeoutExpired:
                well = False
            try:
                os.killpg(process.pid, signal.SIGKILL)
            except ProcessLookupError:
                pass
            process.wait()
            output.seek(0)
            return output.read().decode('latin-1'), well

    def failing(self, suite, first_only):
        """Names of the tests of the suite that fail, twice."""
        arguments = ['--gtest_filter=' + suite.name + '.*'] + (['--gtest_fail_fast'] if first_only else [])
        for _ in range(2):
            output, well = self.start(suite.program, arguments, 10 + 5 * suite.seconds)
            if well:
                return []
        failed = set(re.findall(r'^\[  FAILED  \] ([\w.]+) \(', output, re.M))
        begun = re.findall(r'^\[ RUN      \] ([\w.]+)', output, re.M)
        ended = set(re.findall(r'^\[(?:  FAILED  |       OK |  SKIPPED )\] ([\w.]+)', output, re.M))
        failed |= {test for test in begun if test not in ended}  # it crashed or hung there
        return sorted(f'{self.file_of.get(test, suite.file)}:{test}' for test in failed or {suite.name})

    def notice(self, path, every_test):
        """The tests that fail now; None if the code does not build. A program that the file is no part of does not run."""
        parts = set(os.path.dirname(path).split('/')) - {'src', 'apps'}

        def farness(suite):  # the suites of the file's own folder come first
            return suite.seconds > SLOW, not parts & set(suite.file.split('/')), suite.seconds

        suites = sorted(self.suites, key=farness)
        failed = []
        for program in dict.fromkeys(suite.program.name for suite in suites):
            built = False if failed else self.build([program])
            if built is None:
                return None
            for suite in (s for s in suites if s.program.name == program and built):
                if not failed or every_test and suite.seconds <= SLOW:
                    failed += self.failing(suite, not every_test)
        return failed


def make(copy, tests, mutant, every_test):
    path, text = os.path.join(copy, mutant.file), read(copy, mutant.file)
    result = mutant._asdict()
    result['before'], result['after'] = lines_of(text, mutant)
    begin = time.time()
    try:
        open(path, 'w', encoding='latin-1').write(text[:mutant.start] + mutant.new + text[mutant.end:])
        noticed = tests.notice(mutant.file, every_test)
    finally:
        open(path, 'w', encoding='latin-1').write(text)
    result['outcome'] = 'not compiled' if noticed is None else 'killed' if noticed else 'survived'
    result['by'] = noticed or []
    result['seconds'] = round(time.time() - begin, 1)
    return result


# --- Telling ---------------------------------------------------------------------------------------------------------

def identity(result):
    return result['file'], result['line'], result['start'], result['end'], result['new']


def read_results(path):
    results = {}
    if path and os.path.exists(path):
        for line in open(path):
            result = json.loads(line)
            results[identity(result)] = result
    return list(results.values())


def table(title, results, key):
    print(f'\n{title:<24} {"made":>5} {"killed":>7} {"score":>7}   {"without words and looks":>24}')
    groups = collections.defaultdict(list)
    for result in results:
        groups[key(result)].append(result)
    for name, group in sorted(groups.items()) + [('all', results)]:
        print(f'{name:<24} {len(group):>5} {killed(group):>7} {score(group):>7}', end='   ')
        acts = [r for r in group if r['kind'] not in LOOKS]
        print(f'{len(acts):>8} {killed(acts):>7} {score(acts):>7}')


def killed(results):
    return sum(r['outcome'] == 'killed' for r in results)


def score(results):
    return f'{killed(results) / len(results):.0%}' if results else '-'


def report(results, harmless):
    """Whether none survived."""
    compiled = [r for r in results if r['outcome'] != 'not compiled']
    counted = [r for r in compiled if r['outcome'] == 'killed' or not harmless.names(r['file'], r['before'], r['after'])]
    print(f'{len(results)} drawn, {len(results) - len(compiled)} not compiled, {len(compiled) - len(counted)} harmless')
    table('part', counted, lambda r: r['file'].split('/')[0])
    table('folder', counted, lambda r: os.path.dirname(r['file']))
    table('kind', counted, lambda r: r['kind'])
    survivors = [r for r in counted if r['outcome'] == 'survived']
    print('\nsurvivors')
    for r in sorted(survivors, key=lambda r: (r['file'], r['line'])):
        print(f'{r["file"]}:{r["line"]} ({r["kind"]})\n  - {r["before"]}\n  + {r["after"]}')
    alone, any_ = collections.Counter(), collections.Counter()
    for r in counted:
        any_.update(r['by'])
        alone.update(r['by'] if len(r['by']) == 1 else ())
    print(f'\n{"test":<100} {"kills":>6} {"alone":>6}')
    for test, kills in sorted(any_.items()):
        print(f'{test:<100} {kills:>6} {alone[test]:>6}')
    return not survivors


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument('--copy', default=os.path.join(TREE, 'build', 'mutate'))
    parser.add_argument('--count', type=int, default=120)
    parser.add_argument('--seed', default='1')
    parser.add_argument('--only', default='*')
    parser.add_argument('--acts', action='store_true')
    parser.add_argument('--widest', type=int, default=10**6)
    parser.add_argument('--suite', default='')
    parser.add_argument('--jobs', type=int, default=1)
    parser.add_argument('--every-test', action='store_true')
    parser.add_argument('--show', type=int)
    parser.add_argument('--results')
    parser.add_argument('--again', action='store_true')
    parser.add_argument('--report')
    options = parser.parse_args()
    harmless = Harmless()
    if options.report:
        return int(not report(read_results(options.report), harmless))
    if options.show:
        everything = [m for order in draw(TREE, options.only, options.count, options.seed, harmless)[1].values() for m in order]
        for m in random.Random(options.seed).sample(everything, min(options.show, len(everything))):
            before, after = lines_of(read(TREE, m.file), m)
            print(f'{m.file}:{m.line} ({m.kind})\n  - {before}\n  + {after}')
        return 0

    for number in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP):
        signal.signal(number, lambda *_: sys.exit(130))  # what is changed is put right again
    bring_up_to_date(options.copy)
    tests = Tests(options.copy, options.suite, options.jobs)
    users = tests.users()

    def objects_of(path):
        return users[os.path.join(os.path.realpath(options.copy), path)]

    shares, orders = draw(options.copy, options.only, options.count, options.seed, harmless, objects_of)
    known = {identity(r): r for r in read_results(options.results)}
    if options.again:
        orders = {'': [Mutant(*(r[f] for f in Mutant._fields)) for r in known.values() if r['outcome'] == 'survived']}
        shares, known = {'': len(orders[''])}, {}
    made, compiled = [], collections.Counter()
    while orders:
        for folder in list(orders):  # one of each folder, again and again
            if compiled[folder] == shares[folder] or not orders[folder]:
                del orders[folder]
                continue
            mutant = orders[folder].pop(0)
            if options.acts and mutant.kind in LOOKS:
                continue
            if objects_of(mutant.file) > options.widest:
                continue
            result = known.get(identity(mutant._asdict()))
            if not result:
                result = make(options.copy, tests, mutant, options.every_test)
                print(f'{result["outcome"]:<12} {mutant.file}:{mutant.line} {mutant.kind} {result["seconds"]} s', flush=True)
                if options.results and not options.again:
                    with open(options.results, 'a') as file:
                        file.write(json.dumps(result) + '\n')
            made.append(result)
            compiled[folder] += result['outcome'] != 'not compiled'
    return int(not report(made, harmless))


if __name__ == '__main__':
    sys.exit(main())
