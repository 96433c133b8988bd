#include "SelectionFormula.h"

#include "ReportFailure.h"

#include <QStringList>

namespace {

enum class Tok { End, Field, Number, Text, Op, And, Or, Not, Open, Close };

struct Token {
    Tok kind = Tok::End;
    QString text;  // operator, text value, or "table.field"
    QString table; // for Field
    QString field;
    int position = 0; // from 1
};

class Parser {
public:
    Parser(const QString &formula, const FieldResolver &fields) : m_in(formula), m_fields(fields) {}

    std::optional<SqlCondition> run(QString &error)
    {
        if (!advance() || !orExpression(m_out.sql)) {
            error = m_error;
            return std::nullopt;
        }
        if (m_tok.kind != Tok::End) {
            error = at(m_tok.position,
                       QStringLiteral("\"%1\" was not expected here").arg(shown(m_tok)));
            return std::nullopt;
        }
        return m_out;
    }

    // For a sort field: one field reference and nothing else after the sign.
    std::optional<QString> fieldOnly(QString &error)
    {
        QString sql;
        if (!advance() || m_tok.kind != Tok::Field) {
            error = m_error.isEmpty() ? at(m_tok.position, QStringLiteral("a {table.field} "
                                                                          "reference is needed"))
                                      : m_error;
            return std::nullopt;
        }
        if (!resolve(sql) || !advance()) {
            error = m_error;
            return std::nullopt;
        }
        if (m_tok.kind != Tok::End) {
            error = at(m_tok.position,
                       QStringLiteral("\"%1\" was not expected here").arg(shown(m_tok)));
            return std::nullopt;
        }
        return sql;
    }

private:
    static QString shown(const Token &t)
    {
        return t.kind == Tok::Text ? QStringLiteral("'") + t.text + QStringLiteral("'") : t.text;
    }

    QString at(int position, const QString &what) const
    {
        return QStringLiteral("Selection formula, position %1: %2.").arg(position).arg(what);
    }

    bool fail(int position, const QString &what)
    {
        if (m_error.isEmpty())
            m_error = at(position, what);
        return false;
    }

    // Reads the next token into m_tok.
    bool advance()
    {
        const int n = int(m_in.size());
        while (m_pos < n && m_in[m_pos].isSpace())
            ++m_pos;
        m_tok = Token{};
        m_tok.position = m_pos + 1;
        if (m_pos >= n)
            return true;
        const QChar c = m_in[m_pos];
        if (c == QLatin1Char('{'))
            return fieldToken();
        if (c.isDigit() || (c == QLatin1Char('.') && m_pos + 1 < n && m_in[m_pos + 1].isDigit()))
            return numberToken();
        if (c == QLatin1Char('-') && m_pos + 1 < n &&
            (m_in[m_pos + 1].isDigit() || m_in[m_pos + 1] == QLatin1Char('.')))
            return numberToken();
        if (c == QLatin1Char('\'') || c == QLatin1Char('"'))
            return textToken(c);
        if (c == QLatin1Char('(') || c == QLatin1Char(')')) {
            m_tok.kind = c == QLatin1Char('(') ? Tok::Open : Tok::Close;
            m_tok.text = c;
            ++m_pos;
            return true;
        }
        for (const char *op : {"<=", ">=", "<>", "=", "<", ">"}) {
            const QString o = QString::fromLatin1(op);
            if (m_in.mid(m_pos, o.size()) == o) {
                m_tok.kind = Tok::Op;
                m_tok.text = o;
                m_pos += int(o.size());
                return true;
            }
        }
        if (c.isLetter()) {
            int end = m_pos;
            while (end < n && (m_in[end].isLetterOrNumber() || m_in[end] == QLatin1Char('_')))
                ++end;
            const QString word = m_in.mid(m_pos, end - m_pos);
            const QString lower = word.toLower();
            m_tok.text = word;
            if (lower == QLatin1String("and"))
                m_tok.kind = Tok::And;
            else if (lower == QLatin1String("or"))
                m_tok.kind = Tok::Or;
            else if (lower == QLatin1String("not"))
                m_tok.kind = Tok::Not;
            else
                return fail(m_tok.position, QStringLiteral("unknown word \"%1\"").arg(word));
            m_pos = end;
            return true;
        }
        return fail(m_tok.position,
                    QStringLiteral("the character \"%1\" is not understood").arg(c));
    }

    bool fieldToken()
    {
        const int close = int(m_in.indexOf(QLatin1Char('}'), m_pos));
        if (close < 0)
            return fail(m_tok.position, QStringLiteral("the field reference has no closing \"}\""));
        const QString inside = m_in.mid(m_pos + 1, close - m_pos - 1).trimmed();
        const QStringList parts = inside.split(QLatin1Char('.'));
        auto isName = [](const QString &s) {
            if (s.isEmpty() || !(s[0].isLetter() || s[0] == QLatin1Char('_')))
                return false;
            for (QChar ch : s)
                if (!(ch.isLetterOrNumber() || ch == QLatin1Char('_')))
                    return false;
            return true;
        };
        if (parts.size() != 2 || !isName(parts[0].trimmed()) || !isName(parts[1].trimmed()))
            return fail(m_tok.position,
                        QStringLiteral("\"{%1}\" is not of the form {table.field}").arg(inside));
        m_tok.kind = Tok::Field;
        m_tok.table = parts[0].trimmed();
        m_tok.field = parts[1].trimmed();
        m_tok.text = QStringLiteral("{%1}").arg(inside);
        m_pos = close + 1;
        return true;
    }

    bool numberToken()
    {
        const int n = int(m_in.size());
        int end = m_pos;
        if (m_in[end] == QLatin1Char('-'))
            ++end;
        bool dot = false;
        while (end < n && (m_in[end].isDigit() || (!dot && m_in[end] == QLatin1Char('.')))) {
            dot = dot || m_in[end] == QLatin1Char('.');
            ++end;
        }
        const QString text = m_in.mid(m_pos, end - m_pos);
        if (end < n && (m_in[end].isLetter() || m_in[end] == QLatin1Char('_')))
            return fail(m_tok.position,
                        QStringLiteral("\"%1%2\" is not a number").arg(text, m_in[end]));
        bool ok = false;
        const double value = text.toDouble(&ok);
        if (!ok)
            return fail(m_tok.position, QStringLiteral("\"%1\" is not a number").arg(text));
        m_tok.kind = Tok::Number;
        m_tok.text = text;
        const bool whole = !dot && text.size() <= 18;
        m_number = whole ? QVariant(text.toLongLong()) : QVariant(value);
        m_pos = end;
        return true;
    }

    bool textToken(QChar quote)
    {
        const int n = int(m_in.size());
        QString value;
        int i = m_pos + 1;
        for (;;) {
            if (i >= n)
                return fail(m_tok.position,
                            QStringLiteral("the text has no closing %1").arg(quote));
            if (m_in[i] == quote) {
                if (i + 1 < n && m_in[i + 1] == quote) { // a doubled quote is one quote
                    value += quote;
                    i += 2;
                    continue;
                }
                break;
            }
            value += m_in[i++];
        }
        m_tok.kind = Tok::Text;
        m_tok.text = value;
        m_pos = i + 1;
        return true;
    }

    bool orExpression(QString &sql)
    {
        if (!andExpression(sql))
            return false;
        while (m_tok.kind == Tok::Or) {
            QString right;
            if (!advance() || !andExpression(right))
                return false;
            sql = QStringLiteral("(%1 OR %2)").arg(sql, right);
        }
        return true;
    }

    bool andExpression(QString &sql)
    {
        if (!notExpression(sql))
            return false;
        while (m_tok.kind == Tok::And) {
            QString right;
            if (!advance() || !notExpression(right))
                return false;
            sql = QStringLiteral("(%1 AND %2)").arg(sql, right);
        }
        return true;
    }

    bool notExpression(QString &sql)
    {
        if (m_tok.kind == Tok::Not) {
            if (++m_depth > maxDepth)
                return fail(m_tok.position, QStringLiteral("the formula nests too deeply"));
            QString inner;
            if (!advance() || !notExpression(inner))
                return false;
            --m_depth;
            sql = QStringLiteral("(NOT %1)").arg(inner);
            return true;
        }
        if (m_tok.kind == Tok::Open) {
            if (++m_depth > maxDepth)
                return fail(m_tok.position, QStringLiteral("the formula nests too deeply"));
            const int open = m_tok.position;
            if (!advance() || !orExpression(sql))
                return false;
            if (m_tok.kind != Tok::Close)
                return fail(
                    m_tok.kind == Tok::End ? open : m_tok.position,
                    m_tok.kind == Tok::End
                        ? QStringLiteral("this \"(\" is never closed")
                        : QStringLiteral("\")\" expected instead of \"%1\"").arg(shown(m_tok)));
            --m_depth;
            return advance();
        }
        return comparison(sql);
    }

    bool operand(QString &sql)
    {
        switch (m_tok.kind) {
        case Tok::Field:
            return resolve(sql) && advance();
        case Tok::Number:
            m_out.values << m_number;
            sql = QStringLiteral("?");
            return advance();
        case Tok::Text:
            m_out.values << m_tok.text;
            sql = QStringLiteral("?");
            return advance();
        case Tok::End:
            return fail(m_tok.position, QStringLiteral("the formula ends where a field, number "
                                                       "or text is needed"));
        default:
            return fail(
                m_tok.position,
                QStringLiteral("a field, number or text is needed, not \"%1\"").arg(shown(m_tok)));
        }
    }

    bool comparison(QString &sql)
    {
        QString left;
        if (!operand(left))
            return false;
        if (m_tok.kind != Tok::Op)
            return fail(m_tok.position,
                        m_tok.kind == Tok::End
                            ? QStringLiteral("the formula ends where a comparison "
                                             "(=, <>, <, <=, >, >=) is needed")
                            : QStringLiteral("a comparison (=, <>, <, <=, >, >=) is needed, "
                                             "not \"%1\"")
                                  .arg(shown(m_tok)));
        const QString op = m_tok.text; // one of the six fixed operators
        QString right;
        if (!advance() || !operand(right))
            return false;
        sql = QStringLiteral("(%1 %2 %3)").arg(left, op, right);
        return true;
    }

    bool resolve(QString &sql)
    {
        const FieldAnswer answer = m_fields(m_tok.table, m_tok.field);
        if (!answer.error.isEmpty())
            return fail(m_tok.position, answer.error);
        sql = answer.sql;
        return true;
    }

    static constexpr int maxDepth = 200;
    const QString &m_in;
    const FieldResolver &m_fields;
    int m_pos = 0;
    int m_depth = 0;
    Token m_tok;
    QVariant m_number;
    SqlCondition m_out;
    QString m_error;
};

} // namespace

SqlCondition SelectionFormula::parse(const QString &formula, const FieldResolver &fields)
{
    Parser parser(formula, fields);
    QString error;
    auto condition = parser.run(error);
    if (!condition)
        ReportFailure::raise(error);
    return *condition;
}

QString SelectionFormula::sortField(const QString &text, const FieldResolver &fields)
{
    const QString trimmed = text.trimmed();
    if (!trimmed.startsWith(QLatin1Char('+')) && !trimmed.startsWith(QLatin1Char('-')))
        ReportFailure::raise(QStringLiteral("Sort field \"%1\" must start with + (ascending) "
                                            "or - (descending).")
                                 .arg(text));
    const QString rest = trimmed.mid(1);
    Parser parser(rest, fields);
    QString inner;
    auto column = parser.fieldOnly(inner);
    if (!column)
        ReportFailure::raise(QStringLiteral("Sort field \"%1\": %2").arg(text, inner));
    return *column + (trimmed.startsWith(QLatin1Char('-')) ? QStringLiteral(" DESC")
                                                           : QStringLiteral(" ASC"));
}
