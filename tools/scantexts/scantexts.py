#!/usr/bin/env python3
"""Gathers the module's texts from its sources into a C++ table, at build time.

Every text is written once, in the code, as a key and its English default next to each other:
Translate(u"key", u"default"), a TTextKey {u"key", u"default"} or a dialog table row
{id, {u"KEY", u"default"}}. This script finds those pairs, so the language template can never
drift from the code. Lookups whose key is not written out (a variable, a parameter, a key built
at run time) are listed as lookup sites; a test judges each of them.

usage: scantexts.py SRC_DIR OUT_CPP
"""
import os
import re
import sys

TOKEN = re.compile(r'''
    (?P<comment>//[^\n]*|/\*.*?\*/)
  | (?P<string>(?:u8|u|U|L)?"(?:[^"\\\n]|\\.)*")
  | (?P<char>'(?:[^'\\\n]|\\.)+')
  | (?P<name>[A-Za-z_]\w*(?:::[A-Za-z_]\w*)*)
  | (?P<number>\d[\w.]*)
  | (?P<space>\s+)
  | (?P<punct>.)
''', re.S | re.X)

# What a text key looks like: a dialog or control symbol, the shared buttons, or words joined by "_".
KEY = re.compile(r'^(?:IDOK|IDCANCEL|IDHELP|ID[A-Z]*_\w+|[A-Za-z][A-Za-z0-9]*(?:_[A-Za-z0-9]+)+)$')


class Token:
    def __init__(self, kind, text, line):
        self.kind, self.text, self.line = kind, text, line


def tokens(source):
    line = 1
    out = []
    for m in TOKEN.finditer(source):
        kind = m.lastgroup
        if kind not in ('comment', 'space'):
            out.append(Token(kind, m.group(), line))
        line += m.group().count('\n')
    return out


def literal_body(token):
    """The text between the quotes, C++ escapes as written."""
    return token.text[token.text.index('"') + 1:-1]


def is_key(token):
    return token.kind == 'string' and token.text.startswith('u"') and KEY.match(literal_body(token))


def default_at(toks, i):
    """Adjacent u"" literals from toks[i] on, joined; None when toks[i] is not one."""
    parts = []
    while i < len(toks) and toks[i].kind == 'string' and toks[i].text.startswith('u"'):
        parts.append(literal_body(toks[i]))
        i += 1
    return (''.join(parts), i) if parts else (None, i)


def argument_text(toks, i):
    """The tokens of one call argument from toks[i], up to its "," or ")"."""
    depth, parts = 0, []
    while i < len(toks):
        t = toks[i].text
        if t in '([{':
            depth += 1
        elif t in ')]}':
            if depth == 0:
                break
            depth -= 1
        elif t == ',' and depth == 0:
            break
        parts.append(t)
        i += 1
    return ' '.join(parts), i


def scan(path, rel, texts, constants, calls):
    toks = tokens(open(path, encoding='utf-8').read())
    group = None  # (name, depth) while inside a dialog's table of texts
    depth = 0
    for i, tok in enumerate(toks):
        if tok.text == '{':
            depth += 1
        elif tok.text == '}':
            depth -= 1
            if group and depth < group[1]:
                group = None
        if tok.kind == 'name' and tok.text == 'TDialogText' and i + 2 < len(toks) and toks[i + 2].text == '[':
            group = [toks[i + 1].text, depth + 1]
            continue
        if is_key(tok):
            keys = [literal_body(tok)]
            j = i + 1
            # cond ? u"a" : u"b", u"default": both keys take the default.
            if j + 1 < len(toks) and toks[j].text == ':' and is_key(toks[j + 1]):
                continue
            k = i
            while k >= 2 and toks[k - 1].text == ':' and is_key(toks[k - 2]):
                keys.append(literal_body(toks[k - 2]))
                k -= 2
            if j < len(toks) and toks[j].text == ',':
                text, _ = default_at(toks, j + 1)
                if text is not None:
                    if group and keys[0].startswith('IDD_'):
                        group[0] = '%s (%s)' % (text, keys[0])
                    where = group[0] if group else 'Texts of ' + rel
                    for key in keys:
                        texts.append((where, key, text, rel, tok.line))
                    # kName{u"key", ...} or kName = u"key": a named key for lookups elsewhere.
                    if i >= 2 and toks[i - 1].text == '{' and toks[i - 2].kind == 'name':
                        constants[toks[i - 2].text.split('::')[-1]] = keys[0]
                    continue
            if i >= 2 and toks[i - 1].text == '=' and toks[i - 2].kind == 'name':
                constants[toks[i - 2].text] = keys[0]
        if tok.kind == 'name' and tok.text == 'Translate' and i + 1 < len(toks) and toks[i + 1].text == '(':
            key, j = argument_text(toks, i + 2)
            text = None
            if j < len(toks) and toks[j].text == ',':
                text, _ = default_at(toks, j + 1)
            calls.append((rel, tok.line, key, text, group[0] if group else 'Texts of ' + rel))


def cpp_string(text):
    return '"' + text.replace('\\', '\\\\').replace('"', '\\"') + '"'


def main():
    src, out = sys.argv[1], sys.argv[2]
    texts, constants, calls = [], {}, []
    for folder, dirs, files in sorted(os.walk(src)):
        dirs.sort()
        for name in sorted(files):
            if name.endswith(('.cpp', '.h')):
                path = os.path.join(folder, name)
                scan(path, os.path.relpath(path, src).replace(os.sep, '/'), texts, constants, calls)
    sites = []
    for rel, line, key, text, where in calls:
        name = key.split('::')[-1]
        if key.startswith('u"') and KEY.match(key[2:-1]):
            if text is not None:
                texts.append((where, key[2:-1], text, rel, line))
            continue
        if name in constants:
            if text is not None:
                texts.append((where, constants[name], text, rel, line))
            continue
        sites.append((rel, line, key))
    lines = ['// Generated by tools/scantexts/scantexts.py from the sources; do not edit.',
             '#include "locale/textcatalogue.h"', '', 'namespace qrl {', '',
             'const TScannedText kScannedTexts[] = {']
    for where, key, text, rel, line in texts:
        lines.append('    {%s, u"%s", u"%s", %s, %d},' % (cpp_string(where), key, text, cpp_string(rel), line))
    lines += ['};', 'const std::size_t kScannedTextCount = sizeof kScannedTexts / sizeof kScannedTexts[0];', '',
              'const TLookupSite kLookupSites[] = {']
    for rel, line, key in sites:
        lines.append('    {%s, %d, %s},' % (cpp_string(rel), line, cpp_string(key)))
    lines += ['    {"", 0, ""},', '};',
              'const std::size_t kLookupSiteCount = sizeof kLookupSites / sizeof kLookupSites[0] - 1;', '',
              '}  // namespace qrl', '']
    text = '\n'.join(lines)
    if not os.path.exists(out) or open(out, encoding='utf-8').read() != text:
        with open(out, 'w', encoding='utf-8') as f:
            f.write(text)


if __name__ == '__main__':
    main()
