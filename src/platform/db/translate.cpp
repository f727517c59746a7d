#include "platform/db/translate.h"

#include "platform/db/sql_lexer.h"

#include <QStringList>

#include <algorithm>
#include <memory>

namespace db {

namespace {

using Tokens = QList<Token>;

Translation fail(const QString& why, long number = kTranslateError) {
    return Translation{false, {}, Error{number, why}};
}

// Index of the next token at or after i that is not blank, or tokens.size().
qsizetype nextSolid(const Tokens& t, qsizetype i) {
    while (i < t.size() && t.at(i).isBlank())
        ++i;
    return i;
}

// Index of the last token before i that is not blank, or -1.
qsizetype prevSolid(const Tokens& t, qsizetype i) {
    --i;
    while (i >= 0 && t.at(i).isBlank())
        --i;
    return i;
}

// Parenthesis depth in front of each token.
QList<int> depths(const Tokens& t) {
    QList<int> d(t.size());
    int depth = 0;
    for (qsizetype i = 0; i < t.size(); ++i) {
        if (t.at(i).isSymbol(')'))
            --depth;
        d[i] = depth;
        if (t.at(i).isSymbol('('))
            ++depth;
    }
    return d;
}

QString plainName(const Token& t) {
    if (t.kind == Token::Bracketed || t.kind == Token::Quoted)
        return t.text.mid(1, t.text.size() - 2);
    return t.text;
}

// True when an outer-join marker "(+)" starts at i; *end is set behind its ')'.
bool markerAt(const Tokens& t, qsizetype i, qsizetype* end) {
    if (!t.at(i).isSymbol('('))
        return false;
    const qsizetype plus = nextSolid(t, i + 1);
    if (plus >= t.size() || !t.at(plus).isSymbol('+'))
        return false;
    const qsizetype close = nextSolid(t, plus + 1);
    if (close >= t.size() || !t.at(close).isSymbol(')'))
        return false;
    *end = close + 1;
    return true;
}

bool hasMarker(const Tokens& t) {
    qsizetype end = 0;
    for (qsizetype i = 0; i < t.size(); ++i)
        if (markerAt(t, i, &end))
            return true;
    return false;
}

// Cuts the statement at a ';'. Anything but blanks behind it is a second statement.
bool cutAtSemicolon(Tokens& t, Error* error) {
    for (qsizetype i = 0; i < t.size(); ++i) {
        if (!t.at(i).isSymbol(';'))
            continue;
        if (nextSolid(t, i + 1) < t.size()) {
            *error = multipleStatements();
            return false;
        }
        t.resize(i);
        return true;
    }
    return true;
}

// Removes "TOP n" behind the leading SELECT; *limit receives n, or stays empty.
bool takeTop(Tokens& t, QString* limit, QString* error) {
    const QList<int> d = depths(t);
    for (qsizetype i = 0; i < t.size(); ++i) {
        if (!t.at(i).isWord("SELECT"))
            continue;
        const qsizetype top = nextSolid(t, i + 1);
        if (top >= t.size() || !t.at(top).isWord("TOP"))
            continue;
        if (d.at(i) != 0 || !limit->isEmpty()) {
            *error = QStringLiteral("副問合せの TOP は変換できません (TOP in a subquery)");
            return false;
        }
        const qsizetype num = nextSolid(t, top + 1);
        if (num >= t.size() || t.at(num).kind != Token::Number) {
            *error = QStringLiteral("TOP の後に件数がありません (TOP without a row count)");
            return false;
        }
        // TOP limits its own SELECT; a limit behind a compound statement limits all of it.
        for (qsizetype k = 0; k < t.size(); ++k)
            if (d.at(k) == 0 && (t.at(k).isWord("UNION") || t.at(k).isWord("INTERSECT") || t.at(k).isWord("EXCEPT"))) {
                *error = QStringLiteral("UNION と TOP は変換できません (TOP with UNION)");
                return false;
            }
        *limit = t.at(num).text;
        const qsizetype after = nextSolid(t, num + 1);
        t.remove(top, after - top);
    }
    return true;
}

struct FromItem {
    QString text; // as written, e.g. "M担当者" or "M事業所 AS M異動事業所"
    QString key;  // the name the conditions use: the alias, or the table
};

struct Conjunct {
    QString text;          // the condition without its markers
    QString optional;      // key of the table marked (+), empty for an ordinary condition
    QStringList qualifiers; // every "name." that the condition uses
};

QStringList qualifiersOf(const Tokens& t) {
    QStringList out;
    for (qsizetype i = 0; i + 1 < t.size(); ++i)
        if ((t.at(i).kind == Token::Word || t.at(i).kind == Token::Bracketed || t.at(i).kind == Token::Quoted) &&
            t.at(i + 1).isSymbol('.'))
            out.append(plainName(t.at(i)));
    return out;
}

bool sameName(const QString& a, const QString& b) {
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

qsizetype findKey(const QList<FromItem>& items, const QString& key) {
    for (qsizetype i = 0; i < items.size(); ++i)
        if (sameName(items.at(i).key, key))
            return i;
    return -1;
}

// Comma-joined tables with "(+)" conditions to LEFT JOINs.
Translation rewriteOuterJoins(const Tokens& t) {
    const QList<int> d = depths(t);
    qsizetype from = -1, where = -1, end = t.size();
    for (qsizetype i = 0; i < t.size(); ++i) {
        if (d.at(i) != 0 || t.at(i).kind != Token::Word)
            continue;
        const Token& w = t.at(i);
        if (w.isWord("FROM") && from < 0) {
            from = i;
        } else if (w.isWord("WHERE") && from >= 0) {
            if (where >= 0)
                return fail(QStringLiteral("WHERE が二つあります (a second WHERE clause)"));
            where = i;
        } else if ((w.isWord("GROUP") || w.isWord("ORDER") || w.isWord("HAVING")) && from >= 0 && end == t.size()) {
            end = i;
        } else if (w.isWord("UNION")) {
            return fail(QStringLiteral("UNION と (+) は変換できません (outer-join marker with UNION)"));
        } else if (w.isWord("WHERE") && end != t.size()) {
            return fail(QStringLiteral("WHERE が二つあります (a second WHERE clause)"));
        }
    }
    if (from < 0 || where < 0 || where > end)
        return fail(QStringLiteral("(+) の条件に FROM か WHERE がありません (outer-join marker outside a WHERE)"));

    // The tables of the FROM list.
    QList<FromItem> items;
    qsizetype itemStart = from + 1;
    for (qsizetype i = from + 1; i <= where; ++i) {
        if (i < where && !(d.at(i) == 0 && t.at(i).isSymbol(',')))
            continue;
        Tokens part = t.mid(itemStart, i - itemStart);
        QList<const Token*> solid;
        for (const Token& p : part) {
            if (p.isWord("JOIN"))
                return fail(QStringLiteral("(+) と JOIN は併用できません (outer-join marker with JOIN)"));
            if (!p.isBlank())
                solid.append(&p);
        }
        if (solid.isEmpty() || solid.size() > 3 || (solid.size() == 3 && !solid.at(1)->isWord("AS")))
            return fail(QStringLiteral("FROM の表が読めません (unreadable table in FROM)"));
        items.append({join(part).trimmed(), plainName(*solid.last())});
        itemStart = i + 1;
    }

    // The conditions of the WHERE clause, split at the AND of depth 0.
    QList<Conjunct> conjuncts;
    qsizetype condStart = where + 1;
    bool between = false;
    for (qsizetype i = where + 1; i <= end; ++i) {
        if (i < end) {
            if (d.at(i) != 0)
                continue;
            if (t.at(i).isWord("OR"))
                return fail(QStringLiteral("OR と (+) は変換できません (outer-join marker under OR)"));
            if (t.at(i).isWord("BETWEEN"))
                between = true;
            if (!t.at(i).isWord("AND"))
                continue;
            if (between) {
                between = false;
                continue;
            }
        }
        Tokens part = t.mid(condStart, i - condStart);
        Conjunct c;
        for (qsizetype k = 0; k < part.size(); ++k) {
            qsizetype markerEnd = 0;
            if (!markerAt(part, k, &markerEnd))
                continue;
            const qsizetype column = prevSolid(part, k);
            const qsizetype dot = column >= 0 ? prevSolid(part, column) : -1;
            const qsizetype table = dot >= 0 ? prevSolid(part, dot) : -1;
            if (table < 0 || !part.at(dot).isSymbol('.'))
                return fail(QStringLiteral("(+) の列に表名がありません (outer-join marker on an unqualified column)"));
            const QString key = plainName(part.at(table));
            if (!c.optional.isEmpty() && !sameName(c.optional, key))
                return fail(QStringLiteral("一つの条件に二つの (+) 表があります (two outer tables in one condition)"));
            c.optional = key;
            part.remove(k, markerEnd - k);
            --k;
        }
        c.text = join(part).trimmed();
        c.qualifiers = qualifiersOf(part);
        if (c.text.isEmpty())
            return fail(QStringLiteral("空の条件があります (an empty condition)"));
        if (!c.optional.isEmpty() && findKey(items, c.optional) < 0)
            return fail(QStringLiteral("(+) の表が FROM にありません (outer table not in FROM)"));
        conjuncts.append(c);
        condStart = i + 1;
    }

    // Tables that no marker makes optional form the base, in FROM order.
    QList<bool> optional(items.size(), false);
    for (const Conjunct& c : conjuncts)
        if (!c.optional.isEmpty())
            optional[findKey(items, c.optional)] = true;
    QStringList base;
    QList<bool> placed(items.size(), false);
    for (qsizetype i = 0; i < items.size(); ++i)
        if (!optional.at(i)) {
            base.append(items.at(i).text);
            placed[i] = true;
        }
    if (base.isEmpty())
        return fail(QStringLiteral("すべての表に (+) があります (every table is an outer table)"));

    QString fromText = base.join(QStringLiteral(" CROSS JOIN "));
    for (bool progress = true; progress;) {
        progress = false;
        for (qsizetype i = 0; i < items.size(); ++i) {
            if (placed.at(i))
                continue;
            QStringList on;
            bool ready = true;
            for (const Conjunct& c : conjuncts) {
                if (!sameName(c.optional, items.at(i).key))
                    continue;
                on.append(c.text);
                for (const QString& q : c.qualifiers) {
                    const qsizetype k = findKey(items, q);
                    if (k >= 0 && k != i && !placed.at(k))
                        ready = false;
                }
            }
            if (!ready)
                continue;
            fromText += QStringLiteral(" LEFT JOIN ") + items.at(i).text + QStringLiteral(" ON ") +
                        on.join(QStringLiteral(" AND "));
            placed[i] = true;
            progress = true;
        }
    }
    if (placed.contains(false))
        return fail(QStringLiteral("(+) の結合が循環しています (circular outer joins)"));

    QStringList rest;
    for (const Conjunct& c : conjuncts)
        if (c.optional.isEmpty())
            rest.append(c.text);
    QString sql = join(t.mid(0, from + 1)) + QLatin1Char(' ') + fromText;
    if (!rest.isEmpty())
        sql += QStringLiteral(" WHERE ") + rest.join(QStringLiteral(" AND "));
    if (end < t.size())
        sql += QLatin1Char(' ') + join(t.mid(end)).trimmed();
    return Translation{true, sql, {}};
}


// A FROM clause as a tree of joins, to turn RIGHT JOIN chains round for the
// desktop engine, which answers them far slower than the same LEFT JOINs.
struct JoinNode {
    QString table;                       // a table with its alias, for a leaf
    QString kind;                        // "LEFT", "RIGHT", "INNER" for a join
    std::shared_ptr<JoinNode> left, right;
    QString condition;
};

class JoinParser {
public:
    JoinParser(const Tokens& t, qsizetype begin, qsizetype end) : t_(t), pos_(begin), end_(end) {}

    std::shared_ptr<JoinNode> parse() {
        auto node = join();
        skip();
        return pos_ == end_ ? node : nullptr;
    }

private:
    void skip() {
        while (pos_ < end_ && t_.at(pos_).isBlank())
            ++pos_;
    }
    bool atJoinWord() {
        skip();
        if (pos_ >= end_)
            return false;
        const Token& w = t_.at(pos_);
        return w.isWord("RIGHT") || w.isWord("LEFT") || w.isWord("INNER") || w.isWord("JOIN");
    }
    std::shared_ptr<JoinNode> term() {
        skip();
        if (pos_ >= end_)
            return nullptr;
        if (t_.at(pos_).isSymbol('(')) {
            ++pos_;
            auto inner = join();
            skip();
            if (!inner || pos_ >= end_ || !t_.at(pos_).isSymbol(')'))
                return nullptr;
            ++pos_;
            return inner;
        }
        // table [AS] [alias]
        QStringList words;
        while (pos_ < end_) {
            skip();
            if (pos_ >= end_)
                break;
            const Token& w = t_.at(pos_);
            if (w.isSymbol(')') || w.isWord("ON") || atJoinWord() || w.isSymbol(','))
                break;
            if (w.kind != Token::Word && w.kind != Token::Bracketed && w.kind != Token::Quoted)
                return nullptr;
            words.append(w.text);
            ++pos_;
        }
        if (words.isEmpty() || words.size() > 3)
            return nullptr;
        auto leaf = std::make_shared<JoinNode>();
        leaf->table = words.join(QLatin1Char(' '));
        return leaf;
    }
    std::shared_ptr<JoinNode> join() {
        auto left = term();
        while (left && atJoinWord()) {
            QString kind = QStringLiteral("INNER");
            const Token& w = t_.at(pos_);
            if (!w.isWord("JOIN")) {
                kind = w.text.toUpper();
                ++pos_;
                skip();
                if (pos_ < end_ && t_.at(pos_).isWord("OUTER")) {
                    ++pos_;
                    skip();
                }
                if (pos_ >= end_ || !t_.at(pos_).isWord("JOIN"))
                    return nullptr;
            }
            ++pos_;
            auto right = term();
            skip();
            if (!right || pos_ >= end_ || !t_.at(pos_).isWord("ON"))
                return nullptr;
            ++pos_;
            // The condition runs to the next join word or the closing parenthesis of its level.
            const qsizetype start = pos_;
            int depth = 0;
            while (pos_ < end_) {
                const Token& c = t_.at(pos_);
                if (c.isSymbol('('))
                    ++depth;
                else if (c.isSymbol(')')) {
                    if (depth == 0)
                        break;
                    --depth;
                } else if (depth == 0 && (c.isWord("RIGHT") || c.isWord("LEFT") || c.isWord("INNER") ||
                                          c.isWord("JOIN"))) {
                    break;
                }
                ++pos_;
            }
            auto node = std::make_shared<JoinNode>();
            node->kind = kind;
            node->left = left;
            node->right = right;
            node->condition = join(t_.mid(start, pos_ - start)).trimmed();
            left = node;
        }
        return left;
    }
    static QString join(const Tokens& part) { return db::join(part); }

    const Tokens& t_;
    qsizetype pos_;
    qsizetype end_;
};

QString render(const JoinNode& n, bool outer) {
    if (n.kind.isEmpty())
        return n.table;
    const bool right = n.kind == QLatin1String("RIGHT");
    const JoinNode& first = right ? *n.right : *n.left;
    const JoinNode& second = right ? *n.left : *n.right;
    const QString kind = right ? QStringLiteral("LEFT") : n.kind;
    const QString text = render(first, false) + QLatin1Char(' ') + kind + QStringLiteral(" JOIN ") +
                         render(second, false) + QStringLiteral(" ON ") + n.condition;
    return outer ? text : QLatin1Char('(') + text + QLatin1Char(')');
}

// "X RIGHT JOIN Y ON c" is "Y LEFT JOIN X ON c": the same rows. For a text
// with the word RIGHT in it.
void turnRightJoins(Tokens& t) {
    const QList<int> d = depths(t);
    qsizetype from = -1, end = t.size();
    for (qsizetype i = 0; i < t.size(); ++i) {
        if (d.at(i) != 0 || t.at(i).kind != Token::Word)
            continue;
        if (t.at(i).isWord("FROM") && from < 0)
            from = i;
        else if (from >= 0 && (t.at(i).isWord("WHERE") || t.at(i).isWord("GROUP") || t.at(i).isWord("ORDER") ||
                               t.at(i).isWord("HAVING") || t.at(i).isWord("UNION"))) {
            end = i;
            break;
        }
    }
    if (from < 0)
        return;
    for (qsizetype i = from + 1; i < end; ++i)
        if (d.at(i) == 0 && t.at(i).isSymbol(','))
            return; // comma-joined tables stay as they are
    auto tree = JoinParser(t, from + 1, end).parse();
    if (!tree)
        return; // not a plain join chain: the engine gets it as it stands
    Tokens rebuilt = t.mid(0, from + 1);
    rebuilt.append({Token::Space, QStringLiteral(" ")});
    rebuilt.append({Token::Word, render(*tree, true)});
    if (end < t.size()) {
        rebuilt.append({Token::Space, QStringLiteral(" ")});
        rebuilt.append(t.mid(end));
    }
    t = rebuilt;
}

// Text that the engine would read otherwise than the lexer does, so that no
// one can tell how many statements it holds: broken characters (which reach
// the engine as one and the same replacement character), and on a server a
// bracket it does not know, or a comment inside a comment, which the
// PostgreSQL server nests where the lexer does not.
bool readAlike(const QString& sql, const Tokens& tokens, Target target, Error* error) {
    if (!sql.isValidUtf16()) {
        *error = Error{kTranslateError, QStringLiteral("文字として読めない符号があります (text that is not valid Unicode)")};
        return false;
    }
    for (const Token& t : tokens) {
        if (t.kind == Token::Bracketed && !t.closed && (target == Target::Postgres || target == Target::OdbcOracle)) {
            *error = Error{kTranslateError, QStringLiteral("閉じていない [ があります (an unclosed bracketed name)")};
            return false;
        }
        if (t.kind == Token::Comment && target == Target::Postgres && t.text.startsWith(QLatin1String("/*")) &&
            t.text.indexOf(QLatin1String("/*"), 2) >= 0) {
            *error = Error{kTranslateError, QStringLiteral("コメントの中のコメントは変換できません (a nested comment)")};
            return false;
        }
    }
    return true;
}

} // namespace

Translation translate(const QString& sql, Target target) {
    Tokens tokens = lex(sql);
    Error stop;
    if (!readAlike(sql, tokens, target, &stop))
        return Translation{false, {}, stop};
    if (!cutAtSemicolon(tokens, &stop))
        return Translation{false, {}, stop};
    QString error;
    if (target == Target::OdbcNative)
        return Translation{true, join(tokens), {}};

    if (target == Target::Postgres || target == Target::OdbcOracle) {
        // A name that would run into the word or the dollar-quoted string
        // beside it keeps quotes, so that it stays a name of its own.
        const auto wordLike = [](QChar c) {
            return c.unicode() > 0x7f ? !c.isSpace() : c.isLetterOrNumber() || c == QLatin1Char('_') || c == QLatin1Char('$');
        };
        for (qsizetype i = 0; i < tokens.size(); ++i) {
            Token& t = tokens[i];
            if (t.kind == Token::Bracketed && t.closed) {
                const QString name = plainName(t);
                bool simple = !name.isEmpty();
                for (QChar c : name)
                    if (c.isSpace() || (c.unicode() < 0x80 && !c.isLetterOrNumber() && c != QLatin1Char('_')))
                        simple = false;
                if (i > 0 && !tokens.at(i - 1).text.isEmpty() && wordLike(tokens.at(i - 1).text.back()))
                    simple = false;
                if (i + 1 < tokens.size() && !tokens.at(i + 1).text.isEmpty() && wordLike(tokens.at(i + 1).text.front()))
                    simple = false;
                if (simple) {
                    t.text = name;
                    continue;
                }
                t.text = QLatin1Char('"') + QString(name).replace(QLatin1Char('"'), QStringLiteral("\"\"")) +
                         QLatin1Char('"');
                // Two quoted names that touch would be read as one with a quote inside.
                if (i > 0 && tokens.at(i - 1).text.endsWith(QLatin1Char('"')))
                    t.text.prepend(QLatin1Char(' '));
                if (i + 1 < tokens.size() && tokens.at(i + 1).text.startsWith(QLatin1Char('"')))
                    t.text.append(QLatin1Char(' '));
            } else if (target == Target::Postgres && t.isWord("LIKE")) {
                t.text = QStringLiteral("ILIKE");
            }
        }
    }

    QString limit;
    if (!takeTop(tokens, &limit, &error))
        return fail(error);

    const bool outerJoins = target != Target::OdbcOracle && hasMarker(tokens);
    const bool rightJoins = target == Target::Sqlite && std::any_of(tokens.cbegin(), tokens.cend(),
                                                                    [](const Token& t) { return t.isWord("RIGHT"); });
    if (!limit.isEmpty() || outerJoins || rightJoins) {
        // The rebuilt text puts words behind the last token and runs moved
        // conditions on one line: a string or comment that the text leaves
        // open would swallow them, and so would a comment that ends with its
        // line. Text left open is refused; line comments are taken out.
        if (!tokens.isEmpty() && !tokens.last().closed)
            return fail(
                QStringLiteral("閉じていない引用符かコメントがあります (text that ends inside quotes or a comment)"));
        tokens.removeIf(
            [](const Token& t) { return t.kind == Token::Comment && t.text.startsWith(QLatin1String("--")); });
    }

    QString text;
    if (outerJoins) {
        Translation joined = rewriteOuterJoins(tokens);
        if (!joined.ok)
            return joined;
        text = joined.sql;
    } else {
        if (rightJoins)
            turnRightJoins(tokens);
        // Blanks around the statement go, but not those inside a string
        // that the text leaves open: the engine reports it as it stands.
        while (!tokens.isEmpty() && tokens.last().kind == Token::Space)
            tokens.removeLast();
        while (!tokens.isEmpty() && tokens.first().kind == Token::Space)
            tokens.removeFirst();
        text = join(tokens);
    }
    if (!limit.isEmpty()) {
        if (target == Target::OdbcOracle)
            text += QStringLiteral(" FETCH FIRST ") + limit + QStringLiteral(" ROWS ONLY");
        else
            text += QStringLiteral(" LIMIT ") + limit;
    }
    return Translation{true, text, {}};
}

Error multipleStatements() {
    return Error{kMultipleStatements, QStringLiteral("複数の文は実行できません (more than one statement in one call)")};
}

} // namespace db
