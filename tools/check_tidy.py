#!/usr/bin/env python3
"""Runs clang-tidy and clazy over our sources, with the flags of a built preset.

usage: check_tidy.py PRESET [FILE...]

The preset must be built: its compile commands and its dependency log are read. A file that passed is remembered by
the content of itself, of the headers of ours that it includes and of .clang-tidy, and is not looked at again until one
of them changes.
"""
import concurrent.futures
import hashlib
import json
import os
import pathlib
import re
import shlex
import subprocess
import sys

# Beyond the warnings of level 0: mistakes that clazy finds at level 1, without those that string-based connections and
# plain C++ loops over our own containers would trip over.
CLAZY_CHECKS = ','.join([
    'level0', 'auto-unexpected-qstringbuilder', 'child-event-qobject-cast', 'connect-3arg-lambda', 'const-signal-or-slot',
    'detaching-temporary', 'incorrect-emit', 'install-event-filter', 'non-pod-global-static', 'post-event',
    'qdeleteall', 'qlatin1string-non-ascii', 'qproperty-without-notify', 'qstring-left', 'rule-of-two-soft',
    'skipped-base-method', 'virtual-signal', 'no-connect-by-name', 'no-qenums'])

# Static objects that are meant: each source file of the library registers with the memory tracking by one, each
# benchmark with its program, and a parametrised test remembers its place by one.
MEANT = re.compile(r'non-POD static \((MEM_INITIALIZER|FunctionBenchmark|CodeLocation)\)')

TOP = pathlib.Path(__file__).resolve().parent.parent
CACHE = pathlib.Path(os.environ.get('XDG_CACHE_HOME', pathlib.Path.home() / '.cache')) / 'tolv-tidy'


def read_commands(build):
    """Our sources' compile commands without the precompiled header, which clang cannot read."""
    commands = []
    for entry in json.loads((build / 'compile_commands.json').read_text()):
        source = pathlib.Path(entry['file'])
        if build in source.parents or TOP not in source.parents:
            continue
        words = shlex.split(entry['command'])
        while words[0].endswith('ccache') or words[0].endswith('cmake') or words[0] in ('-E', 'env') or '=' in words[0]:
            words.pop(0)
        kept = []
        skip = False
        for word, following in zip(words, words[1:] + ['']):
            if skip:
                skip = False
            elif word == '-include' and 'cmake_pch' in following:
                skip = True
            elif word != '-Winvalid-pch':
                kept.append(word)
        output = pathlib.Path(kept[kept.index('-o') + 1])
        commands.append({'directory': entry['directory'], 'file': str(source), 'command': shlex.join(kept),
                         'output': str(output)})
    return commands


def read_dependencies(build):
    """For each object file, the headers of ours that it was compiled with."""
    listing = subprocess.run(['ninja', '-C', str(build), '-t', 'deps'], capture_output=True, text=True, check=True).stdout
    dependencies = {}
    current = None
    for line in listing.splitlines():
        if line and not line.startswith(' '):
            match = re.match(r'(\S+): #deps', line)
            current = dependencies.setdefault(match.group(1), []) if match else None
        elif line.strip() and current is not None:
            path = (build / line.strip()).resolve()
            if TOP in path.parents and build not in path.parents:
                current.append(path)
    return dependencies


def key_of(command, headers):
    # Paths count from the checkout, so that another checkout of the same content has nothing left to look at.
    digest = hashlib.sha256(CLAZY_CHECKS.encode() + command['command'].replace(str(TOP), '').encode())
    source = pathlib.Path(command['file'])
    for path in [TOP / '.clang-tidy', source.parent / '.clang-tidy', source, *sorted(headers)]:
        if path.exists():
            digest.update(str(path.relative_to(TOP)).encode() + b'\0' + path.read_bytes())
    return digest.hexdigest()


def check(command, database):
    """Output of both tools for one file; empty where it passes."""
    source = command['file']
    findings = ''
    for tool in (['clang-tidy', '-quiet', '-p', str(database), source],
                 ['clazy-standalone', f'--checks={CLAZY_CHECKS}', f'--header-filter={TOP}/(base|tolv|h|host|modules|tests|bench)/',
                  '--ignore-dirs=.*(_autogen|/build/).*', '--extra-arg=-ferror-limit=0', '-p', str(database), source]):
        run = subprocess.run(tool, capture_output=True, text=True)
        text = run.stdout + (run.stderr if 'clazy' in tool[0] else '')
        messages = re.findall(r'\b(?:warning|error): (.*)', text)
        if any(not MEANT.match(message) for message in messages) or (run.returncode != 0 and not messages):
            findings += text if text.strip() else run.stderr
    return findings


def main():
    build = TOP / 'build' / sys.argv[1]
    wanted = {str(pathlib.Path(name).resolve()) for name in sys.argv[2:]}
    database = build / 'tidy'
    database.mkdir(exist_ok=True)
    commands = read_commands(build)
    (database / 'compile_commands.json').write_text(json.dumps(commands))
    dependencies = read_dependencies(build)
    CACHE.mkdir(parents=True, exist_ok=True)

    waiting = []
    for command in {c['file']: c for c in commands}.values():
        key = key_of(command, dependencies.get(command['output'], []))
        if (not wanted or command['file'] in wanted) and not (CACHE / key).exists():
            waiting.append((command, key))
    print(f'{len(waiting)} of {len(commands)} files to look at')
    failed = 0
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        for (command, key), findings in zip(waiting, pool.map(lambda item: check(item[0], database), waiting)):
            if findings:
                failed += 1
                print(findings)
            else:
                (CACHE / key).touch()
    if failed:
        sys.exit(f'{failed} files have findings')


if __name__ == '__main__':
    main()
