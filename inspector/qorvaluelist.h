// SPDX-License-Identifier: MIT
// The lines the object inspector shows: "name=value" texts, each carrying
// its row object and how its value is edited (typed, picked from a list,
// or through an ellipsis button; read-only or not). The property lists
// write them; the inspector's grid shows them, one line per row.
#pragma once

#include "qordesign_export.h"

#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

class TObject;

enum TEditStyle { esSimple, esEllipsis, esPickList };

// How one line's value is edited.
struct QORDESIGN_EXPORT TItemProp
{
    TEditStyle EditStyle = esSimple;
    QStringList PickList;
    bool ReadOnly = false;
    // The property cannot be written at all (Qt gives it no write
    // accessor): the value is shown greyed and no editor opens on it, not
    // even a dialog's.
    bool Locked = false;
};

class QORDESIGN_EXPORT TValueListStrings : public QObject
{
    Q_OBJECT

public:
    explicit TValueListStrings(QObject *Parent = nullptr);
    ~TValueListStrings() override;

    int Count() const { return int(m_lines.size()); }
    QString Strings(int Index) const;
    // Rewrites a whole line; its object and edit settings stay.
    void SetStrings(int Index, const QString &S);
    // The text before the first "=", and the text after it.
    QString Names(int Index) const;
    QString ValueFromIndex(int Index) const;
    void SetValueFromIndex(int Index, const QString &Value);
    TObject *Objects(int Index) const;
    int AddObject(const QString &S, TObject *Object);
    int Add(const QString &S) { return AddObject(S, nullptr); }

    // Values made only when read. Reading a value can cost a property read
    // per selected object, and a grid shows a few of its lines at a time:
    // with a value maker set, a line can be added with its value pending,
    // and the value is made from the line's object the first time it is
    // read (Strings, ValueFromIndex), then kept like any other.
    using TValueMaker = std::function<QString(TObject *Object)>;
    void SetValueMaker(const TValueMaker &Maker) { m_valueMaker = Maker; }
    const TValueMaker &ValueMaker() const { return m_valueMaker; }
    // Adds "Name=" with the value pending; without a maker the value stays
    // empty.
    int AddPending(const QString &Name, TObject *Object);
    // Forgets a line's value, to be made again when next read; nothing is
    // announced, since the value is what a read would give.
    void SetValuePending(int Index);
    bool ValuePending(int Index) const;
    void Clear();
    // The edit settings of a line; a line out of range has the plain ones.
    TItemProp ItemProps(int Index) const;
    void SetItemProps(int Index, const TItemProp &Props);

    // Between the two, changes are gathered and announced once at the end.
    void BeginUpdate();
    void EndUpdate();
    bool Updating() const { return m_updateCount > 0; }

Q_SIGNALS:
    // Lines were added, removed or replaced.
    void Changed();
    // One line's text changed (outside an update).
    void LineChanged(int Index);

private:
    struct Line
    {
        // "name=value", or only the name while the value is pending.
        QString text;
        TObject *object = nullptr;
        TItemProp props;
        bool pending = false;
        // The object's serial when the line was made: a line whose object
        // has gone answers no object and no value.
        quint64 serial = 0;
    };
    void changed();
    static TObject *liveObject(const Line &L);
    // The line with its value made, if it was pending.
    const Line &made(int Index) const;

    // Lines are made complete on reading: a read changes no visible state.
    mutable std::vector<Line> m_lines;
    TValueMaker m_valueMaker;
    int m_updateCount = 0;
    bool m_changedWhileUpdating = false;
};
