#!/usr/bin/env python3
"""Every box of the program stands on the manual's page about messages, and pages and pictures go together.

    tests/manual/check.py
"""
import glob
import os
import re
import sys

BOX = re.compile(r'(?:MsgBox|AskYesNo|AskToSave|MessageBox|OpenEditorUnless|TellUnsent)\(')
LITERAL = re.compile(r'"((?:[^"\\]|\\.)*)"')


def code(path):
    with open(path, encoding='utf-8') as file:
        return re.sub(r'"\s*\n\s*"', '', re.sub(r'(?m)//.*$', '', file.read()))


def arguments(text, start):
    """What stands in the bracket that opens before `start`."""
    depth, at = 1, start
    while depth:
        literal = LITERAL.match(text, at)
        depth += {'(': 1, ')': -1}.get(text[at], 0)
        at = literal.end() if literal else at + 1
    return text[start:at]


def words(literal):
    return ' '.join(re.sub(r'\\[rn]', ' ', literal).replace('\\"', '"').split())


def boxes():
    """The words of boxes, with the place of each; of a box whose text is made elsewhere, the sentences of that file."""
    for path in glob.glob('src/**/*.cpp', recursive=True) + glob.glob('apps/desktop/*.cpp'):
        text = code(path)
        for call in BOX.finditer(text):
            inside = arguments(text, call.end())
            made_elsewhere = not LITERAL.search(inside.split(',')[0])
            for literal in map(words, LITERAL.findall(text if made_elsewhere else inside)):
                if literal.count(' ') >= 2 and (not made_elsewhere or re.match(r'[A-Z].*\.$', literal)):
                    yield path, literal


def main():
    if sys.argv[1:]:
        print(__doc__.strip(), file=sys.stdout if sys.argv[1:] == ['--help'] else sys.stderr)
        return 0 if sys.argv[1:] == ['--help'] else 2
    os.chdir(os.path.join(os.path.dirname(os.path.abspath(__file__)), '..', '..'))
    pages = {os.path.basename(path): code(path) for path in glob.glob('docs/manual/*.adoc')}
    messages = ' '.join(pages['messages.adoc'].split())
    faults = {f'{path}: not on the page: {text}' for path, text in boxes() if text not in messages}
    scripts = ''.join(map(code, glob.glob('docs/manual/pictures/*.vks')))
    drawn = set(re.findall(r'^(?:picture|picture-in \d+|box) ([\w-]+)', scripts, re.M))
    shown = {picture for page in pages.values() for picture in re.findall(r'image::([\w-]+)\.png', page)}
    faults |= {f'picture {name}: not both drawn and shown' for name in drawn ^ shown}
    links = {link for page in pages.values() for link in re.findall(r'xref:([\w-]+\.adoc)', page)}
    faults |= {f'{link}: linked, but not there' for link in links - set(pages)}
    print('\n'.join(sorted(faults)), end='\n' if faults else '')
    return 1 if faults else 0


if __name__ == '__main__':
    sys.exit(main())
