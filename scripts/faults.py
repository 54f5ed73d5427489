"""The small faults that can be put into a C++ source: operators replaced, a statement deleted, a
number off by one, true and false swapped, a return value changed, a condition negated.

Comments, texts, preprocessor lines, attributes, assertions and declarations are not changed, nor
are statements that reserve memory: without them a correct program behaves the same.
"""
import re
from dataclasses import dataclass

TOKEN = re.compile(r"""
    (?P<skip>//[^\n]*|/\*.*?\*/|^[ \t]*\#(?:[^\n]*\\\n)*[^\n]*|\[\[.*?\]\]|\s+)
  | (?P<text>(?:u8|[uUL])?R"(?P<end>\w*)\(.*?\)(?P=end)"\w*
            |(?:u8|[uUL])?"(?:\\.|[^"\\\n])*"\w*|(?:u8|[uUL])?'(?:\\.|[^'\\\n])+')
  | (?P<number>\d[\w.']*(?:(?<=[eE])[+-]\d+)?)
  | (?P<word>[A-Za-z_]\w*)
  | (?P<sign><<=|>>=|<=>|[-+*/%<>=!&|^]=|&&|\|\||\+\+|--|->|::|<<|>>|.)
""", re.X | re.S | re.M)

# Binary operators have a blank on both sides, a pointer's * and a template's < do not.
TURNED = {"==": ["!="], "!=": ["=="], "<": ["<=", ">="], "<=": ["<", ">"], ">": [">=", "<="],
          ">=": [">", "<"], "&&": ["||"], "||": ["&&"], "+": ["-"], "-": ["+"], "*": ["/"],
          "/": ["*"], "%": ["*"], "+=": ["-=", "="], "-=": ["+=", "="], "*=": ["/="],
          "/=": ["*="], "|": ["&"], "&": ["|"], "|=": ["&="], "&=": ["|="]}
OPEN, CLOSED = "([{", ")]}"
DECLARATION = re.compile(
    r"(const|constinit|static|constexpr|auto|using|typename|struct|class|enum|extern|template|"
    r"case|default|friend|goto|namespace|public|private|protected)\b|"
    r"[\w:]+(<.*>)?(::\w+)*[\s*&]+[*&]*\w+\s*[=;({\[]|[\w:]+<[^=;]*>\s+\w+", re.S)
ASSERTIONS = ("static_assert", "Q_ASSERT", "Q_ASSERT_X")
RESERVES = re.compile(r"[\w.>-]+(\.|->)reserve\(")
# Values that equal {}: of our constants those that are 0 or the first of their enum.
SAME_AS_EMPTY = re.compile(
    r"(\{.*|nullptr|std::nullopt|false|0\.0|Q\w+\(\)|-?\d+|true|"
    r"kErrorSuccess|E\w+::None|ETake::Taken|EVolumeState::Sound)", re.S)


@dataclass(frozen=True)
class Token:
    kind: str
    text: str
    start: int
    end: int


@dataclass(frozen=True)
class Fault:
    path: str
    line: int
    start: int
    end: int
    new: str

    def apply(self, source):
        return source[:self.start] + self.new + source[self.end:]

    def show(self, source):
        """The statement or line before and after, each on one line."""
        first = source.rfind("\n", 0, self.start) + 1
        last = source.find("\n", self.end)
        before = " ".join(source[first:last].split())
        after = " ".join((source[first:self.start] + self.new + source[self.end:last]).split())
        return f"{before} -> {after or '(deleted)'}"


def read_tokens(source):
    tokens = [Token(m.lastgroup, m.group(), m.start(), m.end())
              for m in TOKEN.finditer(source) if m.lastgroup != "skip"]
    kept, skipping = [], False
    for token in tokens:
        skipping = skipping or token.text in ASSERTIONS
        if not skipping:
            kept.append(token)
        skipping = skipping and token.text != ";"
    return kept


def matching(tokens, index):
    """The index of the bracket that closes the one at index."""
    depth = 0
    for at in range(index, len(tokens)):
        if tokens[at].kind == "sign":
            depth += (tokens[at].text in OPEN) - (tokens[at].text in CLOSED)
            if depth == 0:
                return at
    return len(tokens) - 1


def statement_end(tokens, index):
    """The index of the ; that ends the statement at index, or None if a block opens first."""
    at = index
    while at < len(tokens):
        text = tokens[at].text
        if text == ";":
            return at
        if text in CLOSED or (text == "{" and tokens[at - 1].text in (")", "else", "do", "const")):
            return None
        at = matching(tokens, at) + 1 if text in OPEN and tokens[at].kind == "sign" else at + 1
    return None


def condition_start(tokens, index):
    """The index of the first token of the condition before the ? at index."""
    depth, at = 0, index - 1
    while at > 0:
        text = tokens[at].text
        depth += (text in CLOSED) - (text in OPEN)
        if depth < 0 or (depth == 0 and text in ("=", "return", ",", ";", ":", "?", "}", "+=")):
            break
        at -= 1
    return at + 1


def number_faults(text):
    if re.fullmatch(r"\d[\d']*", text):
        value = int(text.replace("'", ""))
        return [str(value + 1)] + ([str(value - 1)] if value > 0 else [])
    if re.fullmatch(r"0[xX][\da-fA-F]+", text):
        return [hex(int(text, 16) + 1)]
    if match := re.fullmatch(r"(\d*\.\d*)(\d)((?:[eE].*)?)", text):
        return [match[1] + str((int(match[2]) + 1) % 10) + match[3]]
    return []


def token_faults(source, tokens, at):
    """Faults of a single token, as (start, end, new)."""
    token, text = tokens[at], tokens[at].text
    if token.kind == "number":
        return [(token.start, token.end, new) for new in number_faults(text)]
    if text in ("true", "false"):
        return [(token.start, token.end, "false" if text == "true" else "true")]
    if token.kind != "sign":
        return []
    if text == "!" or text in ("++", "--"):
        return [(token.start, token.end, {"!": "", "++": "--", "--": "++"}[text])]
    around = (source[token.start - 1] + source[token.end]).isspace()
    joins_texts = text == "+" and "text" in (tokens[at - 1].kind, tokens[at + 1].kind)
    if text in TURNED and around and not joins_texts:
        return [(token.start, token.end, new) for new in TURNED[text]]
    if text == "?":
        first = tokens[condition_start(tokens, at)].start
        last = tokens[at - 1].end
        return [(first, last, f"!({source[first:last]})")]
    return []


def statement_faults(source, tokens, at):
    """Faults of the statement or condition that starts at a token."""
    token, text = tokens[at], tokens[at].text
    if text in ("if", "while") and at + 1 < len(tokens) and tokens[at + 1].text == "(":
        first, last = tokens[at + 1].end, tokens[matching(tokens, at + 1)].start
        inside = source[first:last]
        declares = ";" in inside or re.search(r"[^=!<>]=[^=]", inside)
        return [] if declares else [(first, last, f"!({inside})")]
    before = tokens[at - 1].text if at > 0 else ";"
    is_label = before == ":" and any(t.text in ("case", "default") for t in tokens[max(0, at - 6):at])
    if token.kind not in ("word", "sign") or (before not in (";", "{", "}") and not is_label):
        return []
    end = statement_end(tokens, at)
    if end is None or text in CLOSED or text == ";":
        return []
    found = []
    whole = (token.start, tokens[end].end, "")
    statement = source[token.start:tokens[end].end]
    if text != "return":
        plain = re.sub(r"^(emit|Q_EMIT|delete)\s+", "", statement)
        return [] if DECLARATION.match(plain) or RESERVES.match(plain) else [whole]
    # Only an early return can be deleted: one that ends its function must return something.
    follows = tokens[end + 1].start if end + 1 < len(tokens) else len(source)
    column = follows - source.rfind("\n", 0, follows) - 1
    after = source[follows:follows + 2]
    if statement == "return;" or (after[:1] == "}" and column > 0 and after not in ("};", "})", "},")):
        found.append(whole)
    value = statement[len("return"):-1].strip()
    first, last = tokens[at].end, tokens[end].start
    if value and not SAME_AS_EMPTY.fullmatch(value):
        found.append((first, last, " {}"))
        if re.search(r"[=!]=| [<>]=? |&&|\|\|", value) and "?" not in value:
            found.append((first, last, f" !({value})"))
    return found


def faults_in(path, source):
    """All faults of a source."""
    tokens = read_tokens(source)
    for at in range(len(tokens)):
        for start, end, new in (token_faults(source, tokens, at)
                                + statement_faults(source, tokens, at)):
            yield Fault(path, source.count("\n", 0, start) + 1, start, end, new)
