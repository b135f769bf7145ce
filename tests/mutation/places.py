"""Finds the places of C++ sources that can be changed, by clang's syntax tree.

What may be changed is an expression or a statement that is reached at run time and was not written by a
macro. Left out by rule, since the compiler settles them or nothing could tell:

- initialisers of variables that are constexpr or static, template arguments, array bounds, labels of
  cases, `if constexpr`, sizeof, consteval functions, and what stands outside of functions but for
  initialisers of members and default arguments;
- operators of classes, but for comparisons, which are negated;
- operators and conditions of a type that depends on a template's argument, but for `==`, `!=`, `&&` and
  `||`, and for relations, which are negated;
- an operator whose change would negate a condition: that is settled to true and to false, which is more;
- a number that is an operand of a class's operator (some accept a literal zero alone);
- deleting: a declaration, a statement that is cast to void, a value's return, the last statement of a
  function that has a result, a return or break that would be arrived at all the same.
"""

import collections
import hashlib
import pathlib

from clang.cindex import Config, CursorKind, Index, TokenKind, TranslationUnit, TypeKind

Config.set_compatibility_check(False)
K = CursorKind

RELATIONS = {"<": ["<=", ">="], "<=": ["<", ">"], ">": [">=", "<="], ">=": [">", "<"],
             "==": ["!="], "!=": ["=="]}
NEGATED = {"<": ">=", "<=": ">", ">": "<=", ">=": "<", "==": "!=", "!=": "=="}
ARITHMETIC = {"+": "-", "-": "+", "*": "/", "/": "*", "%": "*", "<<": ">>", ">>": "<<",
              "&": "|", "|": "&", "^": "&"}
FUNCTIONS = {K.FUNCTION_DECL, K.CXX_METHOD, K.CONSTRUCTOR, K.DESTRUCTOR, K.CONVERSION_FUNCTION,
             K.FUNCTION_TEMPLATE}
SCOPES = {K.NAMESPACE, K.CLASS_DECL, K.STRUCT_DECL, K.UNION_DECL, K.CLASS_TEMPLATE, K.LINKAGE_SPEC,
          K.CLASS_TEMPLATE_PARTIAL_SPECIALIZATION, K.FRIEND_DECL, K.UNEXPOSED_DECL}
INTEGERS = {TypeKind.UCHAR, TypeKind.USHORT, TypeKind.UINT, TypeKind.ULONG, TypeKind.ULONGLONG,
            TypeKind.CHAR_S, TypeKind.SCHAR, TypeKind.SHORT, TypeKind.INT, TypeKind.LONG,
            TypeKind.LONGLONG, TypeKind.BOOL, TypeKind.ENUM, TypeKind.CHAR_U, TypeKind.WCHAR}
NUMBERS = INTEGERS | {TypeKind.FLOAT, TypeKind.DOUBLE}
DEPENDENT = {TypeKind.UNEXPOSED, TypeKind.DEPENDENT, TypeKind.INVALID, TypeKind.OVERLOAD}

# How the text around a place is made: of an expression, of a condition, of a statement.
EXPRESSION, CONDITION, STATEMENT = "expression", "condition", "statement"


class Mutant:
    """One change. `was` and `now` tell it, `code` is what stands in the place of begin to end."""

    def __init__(self, layer, begin, end, was, now, code):
        self.layer, self.begin, self.end = layer, begin, end
        self.was, self.now, self.code = was, now, code
        self.file = self.function = None
        self.line = self.place = 0  # the place counts equal changes of one function
        self.number = 0
        self.negates = False

    @classmethod
    def of(cls, fields):
        mutant = cls.__new__(cls)
        vars(mutant).update(fields)
        return mutant

    @property
    def key(self):
        return (self.file, self.function, self.was, self.now, self.place)

    @property
    def id(self):
        return hashlib.sha256("\0".join(map(str, self.key)).encode()).hexdigest()[:12]

    def __str__(self):
        place = f" [{self.place}]" if self.place > 1 else ""
        return f"{self.file}:{self.line}: {self.function}{place}\n    - {self.was}\n    + {self.now}"


class Text:
    """The tokens of one file, by where they begin and end."""

    def __init__(self, unit, path, source):
        self.source = source
        whole = unit.get_extent(str(path), (0, len(source)))
        self.tokens = [(t.extent.start.offset, t.extent.end.offset, t.spelling, t.kind)
                       for t in unit.get_tokens(extent=whole) if t.kind != TokenKind.COMMENT]
        self.at = {t[0]: n for n, t in enumerate(self.tokens)}
        self.ending = {t[1]: n for n, t in enumerate(self.tokens)}
        self.pairs = {}
        opened = []
        for n, (_, _, spelling, _) in enumerate(self.tokens):
            if spelling in ("(", "[", "{"):
                opened.append(n)
            elif spelling in (")", "]", "}") and opened:
                self.pairs[opened.pop()] = n

    def code(self, begin, end):
        """What stands there on one line, without comments."""
        first, last = self.at[begin], self.ending[end]
        parts, before = [], None
        for token in self.tokens[first:last + 1]:
            if before is not None and before < token[0]:
                parts.append(" ")
            parts.append(token[2])
            before = token[1]
        return "".join(parts)

    def next(self, end):
        return self.tokens[self.ending[end] + 1]

    def before(self, begin):
        return self.tokens[self.at[begin] - 1][2]


class Finder:
    """Collects the mutants of the files of one translation unit after the other."""

    def __init__(self, root, files):
        self.root = pathlib.Path(root)
        self.files = set(files)
        self.seen = {}  # file to mutants
        self.last_of_switch = frozenset()  # where the last breaks of the switches around end
        self.index = Index.create(excludeDecls=True)  # but for those of precompiled headers

    def unit(self, source, arguments):
        """Visits a source file and the headers under it that no other has brought."""
        unit = self.index.parse(str(self.root / source), args=arguments,
                                options=TranslationUnit.PARSE_DETAILED_PROCESSING_RECORD)
        errors = [d for d in unit.diagnostics if d.severity >= 3]
        if errors:
            raise SystemExit(f"mutate: clang cannot read {source}: {errors[0]}")
        macros, declared = collections.defaultdict(list), collections.defaultdict(list)
        for cursor in unit.cursor.get_children():
            file = self.name(cursor.location.file)
            if file not in self.files or file in self.seen:
                continue
            if cursor.kind == K.MACRO_INSTANTIATION:
                macros[file].append((cursor.extent.start.offset, cursor.extent.end.offset))
            elif cursor.kind.is_declaration() or cursor.kind == K.UNEXPOSED_DECL:
                declared[file].append(cursor)
        for file, cursors in declared.items():
            source = (self.root / file).read_bytes()
            self.text = Text(unit, self.root / file, source)
            self.macros = macros[file]
            self.file, self.found = file, []
            for cursor in cursors:
                self.declaration(cursor, "")
            self.seen[file] = self.numbered(source)

    def name(self, file):
        if file is None:
            return None
        path = pathlib.Path(file.name)
        path = path if path.is_absolute() else self.root / path
        try:
            return str(path.resolve().relative_to(self.root.resolve()))
        except ValueError:
            return None

    def numbered(self, source):
        """The mutants that were found, in order, each once: of templates there may be copies."""
        settled = collections.Counter((m.begin, m.end) for m in self.found if m.layer == CONDITION)
        unique = {(m.begin, m.end, m.layer, m.code): m for m in self.found
                  if not (m.negates and settled[m.begin, m.end] >= 2)}
        counted = collections.Counter()
        found = sorted(unique.values(), key=lambda m: (m.begin, -m.end, m.layer, m.now))
        for mutant in found:
            mutant.file = self.file
            mutant.line = source.count(b"\n", 0, mutant.begin) + 1
            key = (mutant.function, mutant.was, mutant.now)
            counted[key] += 1
            mutant.place = counted[key]
        return found

    # Declarations.

    def declaration(self, cursor, scope):
        if cursor.kind in FUNCTIONS:
            self.function_body(cursor, scope)
        elif cursor.kind in SCOPES:
            inner = scope
            if cursor.spelling and cursor.kind not in (K.NAMESPACE, K.FRIEND_DECL):
                inner = f"{scope}{cursor.spelling}::"
            for child in cursor.get_children():
                if child.kind.is_declaration() or child.kind == K.UNEXPOSED_DECL:
                    self.declaration(child, inner)
        elif cursor.kind == K.FIELD_DECL and not cursor.is_bitfield():
            self.function = f"{scope}{cursor.spelling}"
            for child in cursor.get_children():
                if child.kind.is_expression() and self.is_initialiser(cursor, child):
                    self.visit(child, cursor)

    def function_body(self, cursor, scope):
        children = list(cursor.get_children())
        parent = cursor.semantic_parent
        if not scope and parent is not None and parent.kind in (
                K.CLASS_DECL, K.STRUCT_DECL, K.CLASS_TEMPLATE):
            outer = []  # defined outside of its class
            while parent is not None and parent.kind not in (K.NAMESPACE, K.TRANSLATION_UNIT):
                outer.insert(0, parent.spelling)
                parent = parent.semantic_parent
            scope = "::".join(outer) + "::"
        before = getattr(self, "function", None)
        self.function = f"{scope}{cursor.spelling.split('<')[0] or 'lambda'}"
        begin = cursor.extent.start.offset
        body = next((c for c in children if c.kind in (K.COMPOUND_STMT, K.CXX_TRY_STMT)), None)
        head = self.words(begin, cursor.location.offset)
        if "consteval" not in head:
            is_initialising = False
            for child in children:
                if child.kind == K.PARM_DECL:
                    self.parameter(child)
                elif child.kind == K.MEMBER_REF or (body is not None and child.kind == K.TYPE_REF):
                    is_initialising = True
                elif child.kind.is_expression() and is_initialising and body is not None:
                    self.visit(child, cursor)
            if body is not None:
                has_result = (cursor.kind != K.CONSTRUCTOR and cursor.kind != K.DESTRUCTOR and
                             cursor.result_type.kind != TypeKind.VOID)
                self.block(body, "result" if has_result else "no result")
        self.function = before

    def parameter(self, cursor):
        for child in cursor.get_children():
            if child.kind.is_expression() and self.is_initialiser(cursor, child):
                self.visit(child, cursor)

    def words(self, begin, end):
        return [t[2] for t in self.text.tokens if begin <= t[0] < end]

    def is_initialiser(self, variable, child):
        """Not a bound of an array, nor an argument of a template that its type names."""
        begin = child.extent.start.offset
        if begin not in self.text.at or begin <= variable.location.offset:
            return False
        return self.text.before(begin) != "["

    # Statements.

    def block(self, cursor, ends=None):
        """A compound statement; `ends` tells what the function has, if it is the body of one."""
        children = list(cursor.get_children())
        for number, child in enumerate(children):
            is_last = number + 1 == len(children)
            self.statement(child, cursor, ends if is_last else None)

    def statement(self, cursor, parent, ends=None):
        kind = cursor.kind
        if kind == K.COMPOUND_STMT:
            self.block(cursor)
            return
        if kind == K.NULL_STMT:
            return
        if kind in (K.CASE_STMT, K.DEFAULT_STMT):
            children = list(cursor.get_children())
            if children:
                self.statement(children[-1], parent)  # the labels before it are constants
            return
        if kind.is_expression() or kind in (K.BREAK_STMT, K.CONTINUE_STMT):
            if ends != "result" and not self.is_void_cast(cursor):
                self.deletion(cursor, parent)
        elif kind == K.RETURN_STMT and not list(cursor.get_children()) and ends is None:
            self.deletion(cursor, parent)
        self.visit(cursor, parent)

    def is_void_cast(self, cursor):
        return cursor.kind in (K.CSTYLE_CAST_EXPR, K.CXX_STATIC_CAST_EXPR) and \
            cursor.type.kind == TypeKind.VOID

    def deletion(self, cursor, parent):
        begin, end = self.range(cursor)
        if begin is None:
            return
        semicolon = self.text.next(end)
        if semicolon[2] != ";":
            return
        # The break of the last case is arrived at all the same.
        after = self.text.next(semicolon[1])[2]
        if cursor.kind == K.BREAK_STMT and after == "}" and parent.kind == K.COMPOUND_STMT and \
                semicolon[1] in self.last_of_switch:
            return
        was = self.text.code(begin, semicolon[1])
        self.add(STATEMENT, begin, semicolon[1], was, "", "")

    # Expressions, and statements that hold some.

    def visit(self, cursor, parent):
        kind = cursor.kind
        if kind == K.LAMBDA_EXPR:
            for child in cursor.get_children():
                if child.kind == K.COMPOUND_STMT:
                    self.block(child, self.lambda_ends(child))
                elif child.kind == K.PARM_DECL:
                    self.parameter(child)
                elif child.kind.is_expression():
                    self.visit(child, cursor)
            return
        if kind == K.CXX_UNARY_EXPR or kind == K.STATIC_ASSERT:  # sizeof and its like
            return
        if kind == K.VAR_DECL:
            self.variable(cursor)
            return
        if kind in SCOPES or kind in FUNCTIONS or kind == K.FIELD_DECL:
            before = self.function
            self.declaration(cursor, self.function + "::")
            self.function = before
            return
        if kind == K.IF_STMT:
            self.branch(cursor)
            return
        if kind in (K.WHILE_STMT, K.FOR_STMT, K.DO_STMT, K.CXX_FOR_RANGE_STMT):
            self.loop(cursor)
            return
        if kind == K.SWITCH_STMT:
            self.choice(cursor)
            return
        if kind in (K.COMPOUND_STMT, K.CASE_STMT, K.DEFAULT_STMT):
            self.statement(cursor, parent)
            return
        if kind == K.CXX_TRY_STMT or kind == K.CXX_CATCH_STMT:
            for child in cursor.get_children():
                if child.kind != K.VAR_DECL:
                    self.visit(child, cursor)
            return
        if kind == K.RETURN_STMT:
            self.result(cursor)
        elif kind in (K.BINARY_OPERATOR, K.COMPOUND_ASSIGNMENT_OPERATOR):
            self.binary(cursor)
        elif kind == K.CALL_EXPR:
            self.comparison(cursor)
        elif kind == K.UNARY_OPERATOR:
            self.unary(cursor)
        elif kind == K.CONDITIONAL_OPERATOR:
            children = list(cursor.get_children())
            self.condition(children[0], "{} ? :", ("true", "false"))
        elif kind in (K.INTEGER_LITERAL, K.FLOATING_LITERAL, K.CXX_BOOL_LITERAL_EXPR):
            self.literal(cursor, parent)
        self.children(cursor)

    def children(self, cursor):
        named = cursor.kind in (K.DECL_REF_EXPR, K.MEMBER_REF_EXPR)
        until = 0  # where the arguments of a template end
        for child in cursor.get_children():
            if child.kind == K.TEMPLATE_REF:
                until = max(until, self.arguments(child.extent.end.offset))
            if child.extent.start.offset < until:
                continue
            # Behind its name an expression has arguments of a template.
            if named and (cursor.kind == K.DECL_REF_EXPR or
                          child.extent.start.offset > cursor.location.offset):
                continue
            if child.kind in (K.TYPE_REF, K.TEMPLATE_REF, K.NAMESPACE_REF):
                continue
            self.visit(child, cursor)

    def arguments(self, end):
        """Where a list of template arguments ends that begins there, if one does."""
        if end not in self.text.ending:
            return 0
        at, depth = self.text.ending[end] + 1, 0
        if self.text.tokens[at][2] != "<":
            return 0
        while True:
            spelling = self.text.tokens[at][2]
            if spelling == "<":
                depth += 1
            elif spelling in (">", ">>"):
                depth -= len(spelling)
            elif depth and at in self.text.pairs:
                at = self.text.pairs[at]
            if depth <= 0:
                return self.text.tokens[at][1]
            at += 1

    def variable(self, cursor):
        words = self.words(cursor.extent.start.offset, cursor.location.offset)
        if {"static", "constexpr", "constinit", "thread_local"} & set(words):
            return
        for child in cursor.get_children():
            if child.kind.is_expression() and self.is_initialiser(cursor, child):
                self.visit(child, cursor)

    def lambda_ends(self, body):
        """Whether a lambda has a result: whether its last statement returns one."""
        children = list(body.get_children())
        if children and children[-1].kind == K.RETURN_STMT:
            return "result" if list(children[-1].get_children()) else "no result"
        return "no result"

    def parentheses(self, begin):
        """The tokens of the first pair of parentheses behind a keyword."""
        first = self.text.at[begin] + 1
        while self.text.tokens[first][2] != "(":
            first += 1
        return first, self.text.pairs[first]

    def branch(self, cursor):
        begin = cursor.extent.start.offset
        children = list(cursor.get_children())
        if begin not in self.text.at:
            return
        first, last = self.parentheses(begin)
        close = self.text.tokens[last][0]
        heads = [c for c in children if c.extent.start.offset < close]
        is_constant = self.text.tokens[first - 1][2] == "constexpr"
        for child in heads:
            if not is_constant:
                self.visit(child, cursor)
        if heads and not is_constant and not self.is_declared(heads[-1], heads):
            self.condition(heads[-1], "if ({})", ("true", "false"))
        for child in children[len(heads):]:
            self.statement(child, cursor)

    def is_declared(self, condition, heads):
        """Whether a condition is that of a variable which is declared there."""
        end = condition.extent.end.offset
        return not condition.kind.is_expression() or any(
            c.kind in (K.VAR_DECL, K.DECL_STMT) and c.extent.start.offset < end <= c.extent.end.offset
            for c in heads)

    def loop(self, cursor):
        begin = cursor.extent.start.offset
        children = list(cursor.get_children())
        if begin not in self.text.at:
            return
        if cursor.kind == K.DO_STMT:
            self.statement(children[0], cursor)
            self.visit(children[1], cursor)
            self.condition(children[1], "while ({})", ("false",))
            return
        first, last = self.parentheses(begin)
        low, high = self.text.tokens[first][0], self.text.tokens[last][0]
        word = "while"
        if cursor.kind == K.FOR_STMT:
            word = "for"
            depth, semicolons = 0, []
            for n in range(first + 1, last):
                spelling = self.text.tokens[n][2]
                depth += (spelling in ("(", "{", "[")) - (spelling in (")", "}", "]"))
                if spelling == ";" and depth == 0:
                    semicolons.append(self.text.tokens[n][0])
            low, high = semicolons
        elif cursor.kind == K.CXX_FOR_RANGE_STMT:
            high = low
        close = self.text.tokens[last][0]
        for child in children:
            at = child.extent.start.offset
            if at > close:
                self.statement(child, cursor)
                continue
            if cursor.kind == K.CXX_FOR_RANGE_STMT and child.kind == K.VAR_DECL:
                continue
            self.visit(child, cursor)
            if low < at < high and not self.is_declared(child, children):
                self.condition(child, f"{word} ({{}})", ("false",))

    def choice(self, cursor):
        for child in cursor.get_children():
            if child.kind == K.COMPOUND_STMT:
                inner = list(child.get_children())
                last = inner[-1] if inner else None
                while last is not None and last.kind in (K.CASE_STMT, K.DEFAULT_STMT):
                    last = list(last.get_children())[-1]
                before = self.last_of_switch
                if last is not None and last.kind == K.BREAK_STMT and \
                        last.extent.end.offset in self.text.ending:
                    self.last_of_switch = before | {self.text.next(last.extent.end.offset)[1]}
                self.block(child)
                self.last_of_switch = before
            else:
                self.visit(child, cursor)

    def result(self, cursor):
        children = list(cursor.get_children())
        if children and children[0].type.get_canonical().kind == TypeKind.BOOL:
            self.condition(children[0], "return {};", ("true", "false"))

    def range(self, cursor):
        """Where a cursor begins and ends, or nothing if a macro has a part in it."""
        begin, end = cursor.extent.start.offset, cursor.extent.end.offset
        if self.name(cursor.extent.start.file) != self.file:
            return None, None
        if begin not in self.text.at or end not in self.text.ending or end <= begin:
            return None, None
        if any(low < end and begin < high for low, high in self.macros):
            return None, None
        return begin, end

    def add(self, layer, begin, end, was, now, code, negates=False):
        mutant = Mutant(layer, begin, end, was, now, code)
        mutant.function, mutant.negates = self.function, negates
        self.found.append(mutant)

    def condition(self, cursor, shape, values):
        """A condition that is settled, unless it is a literal."""
        begin, end = self.range(cursor)
        kind = cursor.type.get_canonical().kind
        if begin is None or kind in DEPENDENT:
            return
        code = self.text.code(begin, end)
        if code in ("true", "false") or self.text.tokens[self.text.at[begin]][1] == end and \
                cursor.kind == K.INTEGER_LITERAL:
            return
        for value in values:
            self.add(CONDITION, begin, end, shape.format(code), shape.format(value), value)

    def operator(self, left, right):
        """The operator between two operands, with where the operation begins and ends."""
        begin, middle = self.range(left)
        after, end = self.range(right)
        if begin is None or after is None or middle > after:
            return None
        token = self.text.tokens[self.text.ending[middle] + 1]
        following = self.text.tokens[self.text.ending[middle] + 2]
        if token[1] > after or following[0] != after:
            return None
        return token[2], begin, middle, after, end

    def binary(self, cursor):
        children = list(cursor.get_children())
        if len(children) != 2:
            return
        found = self.operator(*children)
        if found is None:
            return
        sign, begin, middle, after, end = found
        left, right = self.text.code(begin, middle), self.text.code(after, end)
        kinds = [c.type.get_canonical().kind for c in children]
        is_dependent = any(kind in DEPENDENT for kind in kinds)
        was = f"{left} {sign} {right}"
        if sign in ("&&", "||"):
            other = "||" if sign == "&&" else "&&"
            for now in (f"{left} {other} {right}", left, right):
                code = f"({left}) {other} ({right})" if now not in (left, right) else \
                    f"static_cast<bool>({now})"
                self.add(EXPRESSION, begin, end, was, now, code)
        elif sign in RELATIONS:
            if is_dependent:
                self.negation(begin, end)
                return
            for other in RELATIONS[sign]:
                now = f"{left} {other} {right}"
                self.add(EXPRESSION, begin, end, was, now, now, negates=other == NEGATED[sign])
        else:
            bare = sign[:-1] if sign.endswith("=") and sign != "=" else sign
            if bare not in ARITHMETIC or kinds[1] not in NUMBERS:
                return
            is_pointer = kinds[0] == TypeKind.POINTER and bare in "+-"
            if kinds[0] not in NUMBERS and not is_pointer:
                return
            other = ARITHMETIC[bare] + ("=" if bare != sign else "")
            now = f"{left} {other} {right}"
            self.add(EXPRESSION, begin, end, was, now, now)

    def comparison(self, cursor):
        """A comparison by an operator of a class, or by one that is not known yet."""
        children = [c for c in cursor.get_children() if c.kind.is_expression()]
        if len(children) < 2:
            return
        found = self.operator(children[0], children[-1])
        if found is None or found[0] not in RELATIONS:
            return
        _, begin, _, _, end = found
        self.negation(begin, end)

    def negation(self, begin, end):
        was = self.text.code(begin, end)
        self.add(EXPRESSION, begin, end, was, f"!({was})", f"!({was})", negates=True)

    def unary(self, cursor):
        children = list(cursor.get_children())
        begin, end = self.range(cursor)
        if begin is None or len(children) != 1:
            return
        first = self.text.tokens[self.text.at[begin]]
        last = self.text.tokens[self.text.ending[end]]
        kind = children[0].type.get_canonical().kind
        was = self.text.code(begin, end)
        if first[2] == "!":
            operand = self.text.code(self.text.next(first[1])[0], end)
            self.add(EXPRESSION, begin, end, was, operand, f"static_cast<bool>({operand})",
                     negates=True)
        elif first[2] == "-" and kind in NUMBERS:
            operand = self.text.code(self.text.next(first[1])[0], end)
            self.add(EXPRESSION, begin, end, was, operand, operand)
        elif kind in NUMBERS - {TypeKind.BOOL} or kind == TypeKind.POINTER:
            swap = {"++": "--", "--": "++"}
            if first[2] in swap:
                now = swap[first[2]] + self.text.code(self.text.next(first[1])[0], end)
            elif last[2] in swap and children[0].extent.start.offset == begin:
                now = self.text.code(begin, self.text.tokens[self.text.ending[end] - 1][1]) + \
                    swap[last[2]]
            else:
                return
            self.add(EXPRESSION, begin, end, was, now, now)

    def literal(self, cursor, parent):
        begin, end = self.range(cursor)
        if begin is None or self.text.tokens[self.text.at[begin]][1] != end:
            return
        was = self.text.code(begin, end)
        if was in ("true", "false"):
            now = "false" if was == "true" else "true"
            self.add(EXPRESSION, begin, end, was, now, now)
            return
        if parent.kind == K.CALL_EXPR and parent.spelling.startswith("operator") and \
                parent.spelling not in ("operator()", "operator[]"):
            return
        if cursor.type.get_canonical().kind not in NUMBERS:
            return
        zero = was.rstrip("uUlLfF").strip("0.") == ""
        for sign in "+" if zero or cursor.kind == K.FLOATING_LITERAL else "+-":
            now = f"{was} {sign} 1"  # of the literal's own type
            self.add(EXPRESSION, begin, end, was, str(int(was) + int(sign + "1"))
                     if was == "0" or was.isdigit() and was[0] != "0" else now, now)


def rewritten(source, mutants, guard):
    """The source with every mutant in its place; `guard` writes the test for one. Lines stay."""
    groups = {}
    for mutant in mutants:
        order = {STATEMENT: 0, CONDITION: 1, EXPRESSION: 2}[mutant.layer]
        groups.setdefault((mutant.begin, -mutant.end, order), []).append(mutant)
    ordered = sorted(groups.items())

    def render(begin, end, at):
        """The text from begin to end, with the groups from the place `at` on that lie in it."""
        parts, here = [], begin
        while at < len(ordered) and ordered[at][0][0] < end:
            (low, minus, order), group = ordered[at]
            high = -minus
            assert low >= here and high <= end, f"places overlap: {group[0]}"
            parts.append(source[here:low].decode())
            inner, at = render(low, high, at + 1)
            parts.append(wrapped(group, order, inner))
            here = high
        parts.append(source[here:end].decode())
        return "".join(parts), at

    def wrapped(group, order, inner):
        if order == 0:
            return f"{{ if (!{guard(group[0])}) {{ {inner} }} }}"
        text = f"static_cast<bool>({inner})" if order == 1 else inner
        for mutant in reversed(group):
            text = f"{guard(mutant)} ? {mutant.code} : {text}"
        return f"({text})"

    return render(0, len(source), 0)[0]
