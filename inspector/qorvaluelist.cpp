// SPDX-License-Identifier: MIT
#include "inspector/qorvaluelist.h"

#include "inspector/qorpropdetail.h"

TValueListStrings::TValueListStrings(QObject *Parent)
    : QObject(Parent)
{
}

TValueListStrings::~TValueListStrings() = default;

TObject *TValueListStrings::liveObject(const Line &L)
{
    return TObject::Alive(L.object, L.serial) ? L.object : nullptr;
}

const TValueListStrings::Line &TValueListStrings::made(int Index) const
{
    // Callers check the index against the lines first.
    Q_ASSERT(Index >= 0 && Index < Count());
    Line &line = m_lines[size_t(Index)];
    if (line.pending) {
        line.pending = false;
        if (m_valueMaker)
            line.text += QLatin1Char('=') + m_valueMaker(liveObject(line));
        else
            line.text += QLatin1Char('=');
    }
    return line;
}

QString TValueListStrings::Strings(int Index) const
{
    return Index >= 0 && Index < Count() ? made(Index).text : QString();
}

void TValueListStrings::SetStrings(int Index, const QString &S)
{
    if (Index < 0 || Index >= Count())
        return;
    // A pending value is not made only to be compared and replaced.
    Line &line = m_lines[size_t(Index)];
    if (!line.pending && line.text == S)
        return;
    line.pending = false;
    line.text = S;
    if (Updating())
        m_changedWhileUpdating = true;
    else
        Q_EMIT LineChanged(Index);
}

QString TValueListStrings::Names(int Index) const
{
    if (Index < 0 || Index >= Count())
        return {};
    // A pending line holds its name alone: no value is made for it.
    const QString &line = m_lines[size_t(Index)].text;
    const int eq = int(line.indexOf(QLatin1Char('=')));
    return eq < 0 ? line : line.left(eq);
}

QString TValueListStrings::ValueFromIndex(int Index) const
{
    const QString line = Strings(Index);
    const int eq = int(line.indexOf(QLatin1Char('=')));
    return eq < 0 ? QString() : line.mid(eq + 1);
}

void TValueListStrings::SetValueFromIndex(int Index, const QString &Value)
{
    SetStrings(Index, Names(Index) + QLatin1Char('=') + Value);
}

TObject *TValueListStrings::Objects(int Index) const
{
    return Index >= 0 && Index < Count() ? liveObject(m_lines[size_t(Index)]) : nullptr;
}

int TValueListStrings::AddObject(const QString &S, TObject *Object)
{
    m_lines.push_back({S, Object, {}, false, Object ? Object->Serial() : 0});
    changed();
    return Count() - 1;
}

int TValueListStrings::AddPending(const QString &Name, TObject *Object)
{
    m_lines.push_back({Name, Object, {}, true, Object ? Object->Serial() : 0});
    changed();
    return Count() - 1;
}

void TValueListStrings::SetValuePending(int Index)
{
    if (Index < 0 || Index >= Count() || m_lines[size_t(Index)].pending)
        return;
    Line &line = m_lines[size_t(Index)];
    const int eq = int(line.text.indexOf(QLatin1Char('=')));
    if (eq >= 0)
        line.text.truncate(eq);
    line.pending = true;
}

bool TValueListStrings::ValuePending(int Index) const
{
    return Index >= 0 && Index < Count() && m_lines[size_t(Index)].pending;
}

void TValueListStrings::Clear()
{
    if (m_lines.empty())
        return;
    m_lines.clear();
    changed();
}

TItemProp TValueListStrings::ItemProps(int Index) const
{
    return Index >= 0 && Index < Count() ? m_lines[size_t(Index)].props : TItemProp();
}

void TValueListStrings::SetItemProps(int Index, const TItemProp &Props)
{
    if (Index < 0 || Index >= Count())
        return;
    m_lines[size_t(Index)].props = Props;
    changed();
}

void TValueListStrings::BeginUpdate()
{
    ++m_updateCount;
}

void TValueListStrings::EndUpdate()
{
    if (m_updateCount == 0)
        return;
    if (--m_updateCount == 0 && m_changedWhileUpdating) {
        m_changedWhileUpdating = false;
        Q_EMIT Changed();
    }
}

void TValueListStrings::changed()
{
    if (Updating())
        m_changedWhileUpdating = true;
    else
        Q_EMIT Changed();
}
