"""The faults that tools/mutate inserts into C++ sources."""
import itertools
import random
import re

token = re.compile(r'''//.*|/\*.*?\*/|R?"(?:\\.|[^"\\])*"|'(?:\\.|[^'\\])*'|[A-Za-z_]\w*|\d[\w'.]*|'''
                   r'<=>|<<=|>>=|->|\+\+|--|::|[-+*/%&|^=!<>]=|&&|\|\||<<|>>|.')
binary = {'<': '<=', '<=': '<', '>': '>=', '>=': '>', '==': '!=', '!=': '==', '&&': '||', '||': '&&', '+': '-',
          '-': '+', '*': '/', '/': '*', '%': '*', '&': '|', '|': '&', '<<': '>>', '>>': '<<', '+=': '-=', '-=': '+='}
words = {'true': 'false', 'false': 'true', 'min': 'max', 'max': 'min', 'break': 'continue', 'continue': 'break',
         '++': '--', '--': '++', '!': '', '-': ''}
# An argument of a call, and two neighbouring arguments.
argument = r'[^\s(),{}][^(),{}]*(?:\([^()]*\)|\{[^{}]*\})?[^(),{}]*'
neighbours = re.compile(rf'(?:[({{]|, *)({argument})(?=(, *)({argument})[,)}}])')
no_code = re.compile(r'\s*($|//|#|using\b|namespace\b|template\b|friend\b|static_assert\b|.*GCOV_EXCL)')
# Lines that cannot be removed, mostly declarations.
no_statement = re.compile(r'\s*((const|constexpr|static|auto|case|default|public|private|protected|class|struct)\b|\}|'
                          r'(?!return|throw|delete)[\w:<>,]+[&*]* \w+( =|;|\{))')
parameter = re.compile(r'(.*[\w>][ &*]+)\w+')


def without_comment(line):
    return ''.join(part for part in token.findall(line) if part[:2] not in ('//', '/*')).rstrip()


def is_continued(line):
    """Whether a statement or declaration continues on the next line."""
    code = without_comment(line)
    return code != '' and not code.startswith('#') and code[-1] not in ';{}:'


def changes_of(part, has_spaces):
    number = re.fullmatch(r"(0[xX][\da-fA-F']+|\d[\d']*)([uUlL]*)", part)
    if number:
        value = int(number[1].replace("'", ''), 0 if number[1][1:2] in ('x', 'X') else 10)
        return [f'{value + 1}{number[2]}'] + ([f'{value - 1}{number[2]}'] if value else [])
    if part[-1] == '"':
        return ['""']
    if part[-1] == "'":
        return ["'~'"]
    return [table[part] for table in ([binary] if has_spaces else [words]) if part in table]


def faults_of(line, before, has_code):
    """The replacements of a line, each with one fault; before is the previous line."""
    if no_code.match(line):
        return []
    code, found = without_comment(line), []
    masked = list(code)
    for match in token.finditer(code):
        start, end = match.span()
        if match[0][-1] in '"\'':
            masked[start:end] = '_' * (end - start)
        has_spaces = code[start - 1:start] == ' ' == (code + ' ')[end]
        found += [code[:start] + change + code[end:] for change in changes_of(match[0], has_spaces)]
    masked = ''.join(masked)
    if has_code:
        for match in neighbours.finditer(masked):
            types = [each and each[1] for each in (parameter.fullmatch(match[1]), parameter.fullmatch(match[3]))]
            if types[0] != types[1]:
                continue
            found.append(code[:match.start(1)] + code[slice(*match.span(3))] + match[2] +
                         code[slice(*match.span(1))] + code[match.end(3):])
        is_body = without_comment(before).endswith((')', 'else'))
        is_first = not is_continued(before) and not code.lstrip().startswith('return ')
        if code.endswith(';') and not no_statement.match(code) and (is_body or is_first):
            found.append(re.match(r'\s*', code)[0] + ';')
    return [change for change in dict.fromkeys(found) if change.split() != code.split()]


def all_faults(folder, files, code):
    """A list of faults for each line that has any, as (file, line number, line, replacement)."""
    for file in sorted(files):
        before, is_compiled = '', True
        for number, line in enumerate((folder / file).read_text().splitlines(), 1):
            if line.startswith('#'):
                is_compiled = line != '#ifdef _WIN32'
            changes = faults_of(line, before, number in code.get(file, ())) if is_compiled else []
            if changes:
                yield [(file, number, without_comment(line).strip(), change) for change in changes]
            before = line


def draw(places, seed):
    """The faults in random order, taking one of each line in turn: lines with many numbers have many faults."""
    chance = random.Random(seed)
    chance.shuffle(places)
    for place in places:
        chance.shuffle(place)
    return (fault for faults in itertools.zip_longest(*places) for fault in faults if fault)


def read_equivalents(path):
    """The listed faults that have no effect, as (file, line, replacement)."""
    text = path.read_text() if path.exists() else ''
    for paragraph in re.sub('^#.*\n', '', text, flags=re.MULTILINE).strip().split('\n\n'):
        entry = re.fullmatch(r'(.+)\n- (.+)\n\+ (.+)\n(.|\n)+', paragraph.strip())
        if entry:
            yield entry.groups()[:3]
        elif paragraph:
            raise ValueError(f'{path}: an entry needs a file, a line, a replacement and a reason:\n{paragraph}')
