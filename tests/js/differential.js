#!/usr/bin/env node
// Compares the filter with JavaScript itself. For every case (pattern, replace-with text, line)
// Node computes what the three filter kinds must give:
//   kind 1  line.replace(new RegExp(pattern, "g"), replaceWith)
//   kind 2  line.replace(new RegExp(pattern, "g"), "")
//   kind 3  every match followed by a blank, or the line itself when nothing matches
// or that the pattern is refused; the filter routine, run by filter_runner, must agree. A
// pattern that JavaScript accepts and the filter refuses as one it cannot match the way
// JavaScript does is counted apart, and fails the run as a difference does.
//
//   node differential.js --runner PATH [--random N] [--seed S] [--depth D]
//
// The hand-picked cases always run; --random adds N generated ones (default 0) with groups
// nested D deep (default 2).
'use strict';

const { spawnSync } = require('child_process');

function option(name, fallback) {
    const at = process.argv.indexOf(name);
    return at > 0 && at + 1 < process.argv.length ? process.argv[at + 1] : fallback;
}
const runner = option('--runner', null);
const randomCount = Number(option('--random', '0'));
const seed = Number(option('--seed', String(Date.now() % 100000)));
const depth = Number(option('--depth', '2')); // nesting of generated groups
if (!runner) {
    console.error('usage: node differential.js --runner PATH [--random N] [--seed S] [--depth D]');
    process.exit(2);
}

// Hand-picked cases, by construct: [pattern, replace-with, line].
const fixed = [
    // white space of \s and \S, also inside classes
    ['\\s', '', 'a\u00a0b\u3000c\ufeffd\u2003e\u2028f\u000bg'], ['[\\s]+', '_', 'a \u00a0\u1680b'],
    ['\\S+', '<$&>', 'x\u00a0y\u205fz'], ['[^\\S]', '-', 'a\u3000b'],
    // \v and the other control escapes
    ['\\v', '-', 'a\fb\u000bc'], ['[\\v\\f]', '-', 'a\fb\u000bc\t'],
    ['\\cA|\\cz', '-', '\u0001\u001a'], ['\\cA\\cz', '-', '\u0001\u001a'],
    // [] and [^], also quantified
    ['a[^]c', '_', 'abc a-c ac'], ['a[]', '_', 'a[] ab'], ['[]?\\d', '<$&>', 'a1'], ['[]{0}', '-', 'ab'], ['a[^]*c', '-', 'abxc'],
    ['[^]', '.', 'a\u2028'],
    // back-references, set or not, quantified
    ['(c)?\\1+y', '', 'y'], ['(a)|\\1b', '[$1]', 'ab'], ['(\\w)\\1', '<$1>', 'aabbc'],
    ['\\1(a)', '-', 'aa'], ['(c)?\\1{2,}y', '<$&>', 'y'], ['(a)\\10', '-', 'aa0'],
    ['(a)?b\\1', 'X', 'b ab aba'], ['(?<n>.)\\k<n>', '[$<n>]', 'xxyz'], ['(a)\\2', '-', 'a\u0002'],
    // refused by JavaScript
    ['(?i)a', '', 'a'], ['a++', '', 'a'], ['(?>a)', '', 'a'], ['(?#x)a', '', 'a'],
    ['(?P<n>a)', '', 'a'], ['(?|a)', '', 'a'], ['(?<=a)*', '', 'a'], ['(?<=a)+b', '', 'ab'],
    ['a{2,1}', '', 'a'], ['[z-a]', '', 'a'], ['(?<a>x)(?<a>y)', '', 'xy'],
    ['(?<a>x)\\k<b>', '', 'x'],
    ['(?<1>x)', '', 'x'], ['a)', '', 'a'], ['(a', '', 'a'], ['[a', '', 'a'], ['\\', '', 'a'],
    ['*a', '', 'a'], ['a**', '', 'a'], ['^*', '', 'a'], ['\\b+', '', 'a'], ['{1}', '', 'a'],
    ['(?<a>x)\\k', '', 'xk'], ['(?<a>x)[\\k]', '', 'xk'],
    // ASCII patterns over characters of several bytes: matches start and end between characters
    ['a*', '-', 'caf\u00e9\u20aca'], ['\\d+|\\B', '-', '1\u00e92\u20ac'],
    ['(?<![a-z])\\d\\b', '<$&>', '\u00e91 x2\u00e9'], ['\\w+', '[$&]', 'ab\u00e9cd\u00ff'],
    // runs of one set of ASCII characters, matched by a scan of the bytes, and look-alikes that
    // are not such runs
    ['[0-9]+', '<$&>', '12a\u00e93 45\u20ac6'], ['(?:[a-c])+', '-', 'abcxcba\u00e1c'],
    ['x+', '[$&]', 'xx\u00d7x'], ['[]+', '-', 'abc'], ['[0-9]+?', '<$&>', 'a123'],
    ['[a-c]{2,}', '<$&>', 'abcab'], ['([0-9])+', '[$1]', 'a123b'], ['[^0-9]+', '-', 'a1\u00e92'],
    ['(\\w+)=', '[$1]', 'a=b c\u00e9=d==e='], ['[0-9]+ab', "<$&|$`>", '1a12ab9ab ab'],
    ['(\\w+)\u00e9', '[$1]', 'ab\u00e9c\u00e9'], ['(\\w+)=\\w', '-', 'a=b=c'],
    // compatibility escapes and plain characters
    ['\\u{41}', '-', 'u'.repeat(41) + 'A'], ['\\G', '-', 'aGc'],
    ['\\A\\Z\\z\\h\\e\\a', '-', 'AZzhea'], ['\\A\\Z\\h\\e\\R\\K\\Q', '-', 'AZheRKQ'],
    ['\\u{e9}', '-', 'u{e9}\u00e9'], ['\\u00e9+', 'e', 'caf\u00e9 \u00e9\u00e9'],
    ['[\\1\\8]', '-', '\u00018'], ['(?<\u00e9>x)', '[$<\u00e9>]', 'x'],
    ['\\p{L}', '-', 'p{L}'], ['\\c1', '-', '\\c1'], ['\\8\\9', '-', '89'], ['\\o\\y', '-', 'oy'],
    ['\\1', '-', '\u0001'], ['\\18', '-', '\u00018'], ['\\0', '-', '\u0000'],
    ['\\08', '-', '\u00008'],
    ['\\377\\400', '-', '\u00ff 0'], ['[\\d-z]', '-', '5-za'], ['[a-\\d]', '-', 'a-5b'],
    ['[[:digit:]]', '-', '5d:]'], ['(?<$a>x)', '[$<$a>]', 'x'], ['(?<\\u0061b>x)', '[$<ab>]', 'x'],
    ['\\uD83D\\uDE00', '-', 'a\u{1F600}b'], ['\\x4g\\x41', '-', 'x4gA'],
    ['\\u00e9\\u0', '-', '\u00e9u0'], ['a{,2}', '-', 'a{,2}'],
    [']}', '-', 'a]}'], ['[\\b]', '-', '\b'], ['[\\c1\\c_]', '-', '\u0011\u001f'],
    ['[\\c]', '-', '\\c'],
    ['\\/\\-', '-', '/-'], ['(?=a)*b', '-', 'ab'], ['(?=(a))+', '[$1]', 'a'],
    ['(?=(a))?a', '[$1]', 'a'],
    // JavaScript's own matching rules
    ['(?:(a)|b)+', '[$1]', 'ab'], ['(?:(a)|(b))+', '[$1|$2]', 'abba'],
    ['((a)|b)*', '[$1$2]', 'aab'],
    ['(?:(a)b?)+', '[$1]', 'aba'], ['(?:(x)?y)+', '[$1]', 'xyy'], ['(?:(a)b*?)+', '[$1]', 'aab'], ['(?:a(b)?)+', '[$1]', 'aba'],
    ['(?:(a)|b\\1)+', '[$1]', 'ab'], ['(?:(a)\\1|b)+', '[$1]', 'aab'], ['(|)*', '[$1]', 'a'],
    ['()+', '[$1]', 'a'], ['(?:|a)+', '[$&]', 'aa'], ['(?:a|)+', '[$&]', 'aa'],
    ['(a*)+', '[$1]', 'a'],
    ['(?<=a+)b', '', 'ab'], ['(?<=a|bc)x', '-', 'bcx'], ['(?<=(\\w)\\w)c', '[$1]', 'abc'],
    ['(?:x|(?=b)){0}', '-', 'dba'], ['(?<=a{0}b)c', '-', 'bc'], ['x{65536}', '', 'x'],
    ['(?:(?<=a|(b)c)x)+', '[$1]', 'bcxax'], ['.', '-', 'a\u2028b'], ['^a|b$', '-', 'aab'],
    ['\\d+(?=px)', '[$&]', '10px 20em 30px'], ['(?<=\\$)\\d+', 'N', 'cost $15 and $7'],
    // matched by the backtracking matcher (its own test, BacktrackMatcherTest.cpp, holds only the
    // cases that are not here): lookbehinds of any length, read from right to left
    ['(?<=\\$\\d+\\.)\\d+', '<$&>', 'pay $12.50 or 3.75 or $4.5'], ['(?<=a+)b', '-', 'ab b aab'],
    ['(?<=(\\d+)(\\d+))$', '[$1|$2]', '1053'], ['(?<=\\1(a))b', '[$1]', 'aab ab'],
    ['(?<=(a)\\1)b', '[$1]', 'aab'], ['(?<=(?:(a)|b)+)c', '[$1]', 'abc bac'],
    ['(?<=(\\w){2})c', '[$1]', 'abc'], ['(?<!(a)b+)c', '[$1]', 'abbc xbc'],
    ['(?<=a(?=b+c)\\w*)d', '-', 'abcd abd'], ['(?<=(?<!x)y+)z', '-', 'yyz xyz'],
    ['(?<=^\\w+)\\d', '-', 'ab1 c2'], ['(?<=\\b\\w+\\s+)x', '-', 'aa  x bx'],
    // repetitions of what can match the empty text, and the groups each iteration clears
    ['(?:a??)*', '[$&]', 'aa'], ['(?:a??)+b', '[$&]', 'aab'], ['(a*)*', '[$1]', 'aab'],
    ['(a*)+b', '[$1]', 'aab'], ['(a*?)+', '[$1]', 'aa'], ['(?:(a)|b|)+', '[$1]', 'abab'],
    ['(?:(a)|())+', '[$1|$2]', 'aa'], ['(?:()|a)+', '[$1]', 'aa'], ['((a)|(b)?)+', '[$2|$3]', 'ab'],
    ['(\\1a?){2}', '[$1]', 'aaaa'], ['(?:\\1(a))+', '[$1]', 'aaa'], ['(?:(a)\\2(b)?)+', '[$1$2]', 'aabab'],
    ['(a|\\1b)+', '[$1]', 'aab'], ['(?:(?=(a))a)+?b', '[$1]', 'aab'], ['(z)((a+)?(b+)?(c))*', '[$3|$4]', 'zaacbbbcac'],
    // repeat counts beyond 65535
    ['a{65536}', '-', 'aaa'], ['a{0,70000}', '[$&]', 'aaab'], ['(?:ab){1,100000}', '-', 'ababab'],
    ['x{2147483648}', '-', 'x'], ['(?:a|b){3,99999999999}', '-', 'abab'],
    // empty matches and the order of alternatives
    ['x*', '-', 'abc'], ['x*', '-', '\u00e4b'], ['a*?', '-', 'aa'], ['b*', '-', 'abc'],
    ['a|ab', '[$&]', 'abc'],
    // the $ forms of the replace-with text
    ['b', "[$`|$']", 'abc'], ['(a)|(b)', '[$1$2]', 'ab'], ['(?<d>\\d)', '$<x>|$<d>', 'a1'],
    ['(\\d)', '$<d>', 'a1'], ['(\\d)', '$9$1', 'a1'], ['(\\d)', '$10|$01|$00', 'a1'],
    ['\\d', '$$|$0|$', 'a1'], ['(?<y>\\d{4})-(?<m>\\d\\d)', '$<m>/$<y>', 'on 2024-05 and 1999-12'],
];

// A small seeded generator, so that a run can be repeated with its seed.
let state = seed >>> 0;
function random() {
    state = (state + 0x6d2b79f5) >>> 0;
    let t = state;
    t = Math.imul(t ^ (t >>> 15), t | 1);
    t ^= t + Math.imul(t ^ (t >>> 7), t | 61);
    return ((t ^ (t >>> 14)) >>> 0) / 4294967296;
}
const pick = (list) => list[Math.floor(random() * list.length)];

const lineCharacters = [
    'a', 'b', 'c', 'x', '1', '2', ' ', '-', '\u00e9', '\u00a0', '\u3000', '\ufeff',
    '\u2028', '\u2029', '\u0085', '\u180e', '\u200b', '\u000b', '\f', '\t', '[', ']', ':', 'd',
    'u', '{', '}', '$', '\\', '_', '.', 'a', 'a', 'b'];
const atoms = [
    'a', 'b', 'c', 'x', '1', ' ', '-', '\u00e9', '\u00a0', '.', '\\s', '\\S', '\\d', '\\D',
    '\\w', '\\W', '\\v', '\\f', '\\t', '\\b', '\\B', '^', '$', '\\u00e9', '\\u{2}', '\\x61', '\\xz',
    '\\0', '\\1', '\\2', '\\8', '\\12', '\\c1', '\\cA', '\\k', '\\k<n>', '\\G', '\\Z', '\\e',
    '\\p{L}', '[]', '[^]', '[abc]', '[^a]', '[a-c]', '[\\s]', '[^\\s]', '[\\S]', '[\\d-z]',
    '[\\w-]', '[z-a]', '[[:alpha:]]', '[\\b]', '[\\c1]', '[\\u00e9-\\u3000]', '{', '}', ']',
    '\\/', '\\-', '\\$', 'a', 'b', '.'];
const groupOpenings = [
    '(', '(', '(', '(?:', '(?:', '(?=', '(?!', '(?<=', '(?<!', '(?<n>', '(?<$x>'];
const quantifiers = ['*', '+', '?', '{2}', '{0,2}', '{1,}', '*?', '+?', '??', '{0}', '{1,3}?'];
// Forms JavaScript refuses, mixed in now and then.
const refusedOpenings = ['(?i)', '(?>', '(?P<n>', '(?|', '(?#'];
const refusedQuantifiers = ['++', '**', '{2,1}?+', '*{2}'];
// Constructs that only the backtracking matcher matches the JavaScript way, mixed in as terms:
// lookbehinds of any length or with back-references and repeated groups, repetitions of what can
// match the empty text, back-references into the iteration that sets them, large counts.
const backtrackerTerms = [
    '(?<=a+)', '(?<=\\$\\d+\\.)', '(?<=(a)+)', '(?<=\\1(a))', '(?<=(a)\\1)', '(?<!(\\w)\\1)',
    '(?<=(\\w)+x)', '(?<=(?:(a)|b)*)', '(?<!a*b)', '(?<=(\\d+)(\\d+))', '(?<=\\b\\w{1,3})',
    '(?:|a)+', '(?:a??)*', '(?:a|)*?', '(a*)+', '(a*)*', '(a*?)+', '(a|)+', '(?:(a)|)*',
    '(\\1a?){2}', '(?:\\1(a))+', '(a\\1?){1,3}', '(?:(a)\\1?)+', '((a)|\\2b)+',
    'a{65536}', 'a{0,65536}', '(?:a|b){1,70000}', 'x{0,4294967296}?'];
const replacements = ['-', '[$1]', '<$&>', "$`|$'", '[$<n>]', '$$', '$2$1', '', '[$<$x>]'];

function term(depth) {
    if (random() < 0.06)
        return pick(backtrackerTerms);
    const refusing = random() < 0.04;
    let text = depth > 0 && random() < 0.3
        ? pick(refusing ? refusedOpenings : groupOpenings) + disjunction(depth - 1) + ')'
        : pick(atoms);
    if (random() < 0.35)
        text += pick(refusing ? refusedQuantifiers : quantifiers);
    return text;
}
function sequence(depth) {
    let text = '';
    for (let n = Math.floor(random() * 4); n >= 0; --n)
        text += term(depth);
    return text;
}
function disjunction(depth) {
    return random() < 0.2 ? sequence(depth) + '|' + sequence(depth) : sequence(depth);
}
function line() {
    let text = '';
    for (let n = Math.floor(random() * 9); n > 0; --n)
        text += pick(lineCharacters);
    return text;
}

const cases = fixed.slice();
for (let i = 0; i < randomCount; ++i)
    cases.push([disjunction(depth), pick(replacements), line()]);

function expected([pattern, replaceWith, text]) {
    let regex;
    try {
        regex = new RegExp(pattern, 'g');
    } catch (error) {
        return { refused: error.message };
    }
    const matches = [...text.matchAll(regex)];
    return {
        results: [
            text.replace(regex, replaceWith),
            text.replace(regex, ''),
            matches.length === 0 ? text : matches.map((m) => m[0] + ' ').join(''),
        ],
    };
}

const hex = (text) => Buffer.from(text, 'utf8').toString('hex');
const fromHex = (text) => Buffer.from(text, 'hex').toString('utf8');
const run = spawnSync(runner, {
    input: cases.map((c) => c.map(hex).join('\t')).join('\n') + '\n',
    maxBuffer: 1 << 30,
});
if (run.status !== 0) {
    console.error(`${runner} failed: ${run.stderr}`);
    process.exit(2);
}
const replies = run.stdout.toString().split('\n');

let agree = 0, refused = 0, unsupported = 0, differ = 0;
cases.forEach((c, i) => {
    const want = expected(c);
    const [status, ...fields] = replies[i].split('\t');
    const got = fields.map(fromHex);
    const describe = `/${c[0]}/ with ${JSON.stringify(c[1])} on ${JSON.stringify(c[2])}`;
    if (status === 'unsupported' && !want.refused) {
        ++unsupported;
        console.log(`UNSUPPORTED: ${describe}: ${got[0]}`);
    } else if (want.refused && status === 'invalid') {
        ++refused;
    } else if (!want.refused && status === 'ok' && want.results.every((r, k) => r === got[k])) {
        ++agree;
    } else {
        ++differ;
        console.log(`DIFFERS: ${describe}`);
        const javaScript = want.refused ? 'refused: ' + want.refused : JSON.stringify(want.results);
        console.log(`  JavaScript: ${javaScript}`);
        const filter = status === 'ok' ? JSON.stringify(got) : status + ': ' + got[0];
        console.log(`  filter:     ${filter}`);
    }
});
console.log(`${cases.length} cases (seed ${seed}): ${agree} give the same results, ${refused} ` +
            `refused by both, ${unsupported} refused as not matchable the JavaScript way, ` +
            `${differ} differ`);
process.exit(differ > 0 || unsupported > 0 ? 1 : 0);
