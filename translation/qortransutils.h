// SPDX-License-Identifier: MIT
// The translation manager: identifiers of the type system (class,
// property, value and event names, component references) turned into the
// labels of a dictionary and labels typed by the user turned back, with
// the translation cache in front of the dictionary. The dictionary is an
// SQLite file opened read-only; without one, or when it cannot be read,
// every identifier passes through unchanged. Also the unit's free
// functions: the display label of a class and the display name of a
// component, through which every caller gets the texts it shows. The character sets by which
// value texts are split into identifiers (IdentCharset, SeperatorCharset,
// IsIdentChar, IsSeperatorChar) are the naming functions' own sets, reached
// here through the include below: there is one definition of each.
#pragma once

#include "qordesign_export.h"

#include "foundation/vhortti.h"
#include "foundation/vhosysutils.h"

#include <QString>

#include <functional>
#include <memory>

class QObject;
class TQorTransCache;
struct QMetaObject;

// What a dictionary identifier is.
enum TTransTypeKind { ttkEnum, ttkSet, ttkClass, ttkClassValue, ttkPropName, ttkCompName, ttkEvent };

// The dictionary's text of each kind: "ENUM", "SET", "CLASS", "CLASSVALUE",
// "PROPNAME", "COMPNAME", "EVENT".
QORDESIGN_EXPORT QString TransTypeKindStrs(TTransTypeKind Kind);

// What an inspector text is: a property's name or its value.
enum TTransRole { trPropName, trPropValue };

enum TTranslateLan { tlDefault, tlEnglish, tlChinese };
// Kept for applications; nothing in the library changes by it.
QORDESIGN_EXPORT extern TTranslateLan TranslateLan;

// The texts of the type kinds: "tkUnknown", "tkInteger", ...
QORDESIGN_EXPORT QString TypeKindStrs(TTypeKind Kind);

// Replaces one word of an expression (Output arrives empty).
using TIdentsWalkThroughProc = std::function<void(PTypeInfo APTI, const QString &Input, QString &Output)>;

class QORDESIGN_EXPORT TQorTransMan
{
public:
    explicit TQorTransMan(const QString &DbFileName = QString());
    ~TQorTransMan();
    TQorTransMan(const TQorTransMan &) = delete;
    TQorTransMan &operator=(const TQorTransMan &) = delete;

    TQorTransCache *Cache() const { return m_cache; }
    QString DbFileName() const { return m_dbFileName; }
    // A new name (compared without regard to case) opens that dictionary,
    // or closes the current one for a blank name. The cache is kept.
    void SetDbFileName(const QString &Value);
    // True when the dictionary is open or could be opened now.
    bool OpenDb();
    // Changes whenever a dictionary is opened or closed: what was looked
    // up under another number may read differently now.
    quint64 Generation() const { return m_generation; }

    // The core look-ups. TypeKind and Component are not used. Identifier
    // to label never fails (a dictionary error gives the identifier);
    // label to identifier throws EQorError on a dictionary error.
    QString IdentToLabel(TTransTypeKind Kind, TTypeKind TypeKind, const QString &TypeName, const QString &Ident,
                         QObject *Component);
    QString LabelToIdent(TTransTypeKind Kind, TTypeKind TypeKind, const QString &TypeName, const QString &CnLabel,
                         QObject *Component);
    QString IdentToLabel(TTransTypeKind Kind, const QString &TypeName, const QString &Ident, QObject *Component);
    QString LabelToIdent(TTransTypeKind Kind, const QString &TypeName, const QString &CnLabel, QObject *Component);
    // Driven by the type: events, sets word by word, values with fields,
    // component references relative to Component, and plain look-ups.
    QString IdentToLabel(TTransTypeKind Kind, PTypeInfo PTI, const QString &Ident, bool PassTypeKind,
                         QObject *Component);
    QString LabelToIdent(TTransTypeKind Kind, PTypeInfo PTI, const QString &CnLabel, bool PassTypeKind,
                         QObject *Component);
    // What the object inspector asks for its names and values.
    QString IdentToLabel(TTransRole Role, PTypeInfo PTI, const QString &Ident, QObject *Component);
    QString LabelToIdent(TTransRole Role, PTypeInfo PTI, const QString &CnLabel, QObject *Component);
    // A class's label: found under "CLASSVALUE" with the class name as
    // both type name and identifier.
    QString ClassToTransedName(const QMetaObject *AClass);
    // Every word of a set's or a value's text, translated.
    QString TransComplexExpression(TTransTypeKind Kind, PTypeInfo PTI, const QString &Expr, bool ToLabel);

    void ExSetIdentToLabel(PTypeInfo APTI, const QString &Input, QString &Output);
    void ExSetLabelToIdent(PTypeInfo APTI, const QString &Input, QString &Output);
    void ExClassIdentToLabel(PTypeInfo APTI, const QString &Input, QString &Output);
    void ExClassLabelToIdent(PTypeInfo APTI, const QString &Input, QString &Output);

    // Filter texts for applications that filter the dictionary themselves;
    // the values are put in as they are.
    QString GenerateIdentToLabelFilterStr(TTransTypeKind Kind, const QString &TypeName, const QString &Ident) const;
    QString GenerateLabelToIdentFilterStr(TTransTypeKind Kind, const QString &TypeName, const QString &CnLabel) const;

private:
    void closeDb();
    // Finds the first row of the kind (and the type name, when given)
    // whose KeyColumn holds Key, without regard to case; its Indent and
    // CnLabel. False when there is none; throws EQorError on a dictionary
    // error.
    bool locate(TTransTypeKind Kind, const QString *TypeName, const char *KeyColumn, const QString &Key,
                QString &Indent, QString &CnLabel);

    TQorTransCache *m_cache;
    QString m_dbFileName;
    QString m_connection;
    bool m_open = false;
    quint64 m_generation = 0;
    struct Queries;
    std::unique_ptr<Queries> m_queries;
};

// The one manager of the process, made on first use with no dictionary.
QORDESIGN_EXPORT TQorTransMan *QorTransMan();

// Walks the words of an expression (the text between separators, the
// first character never being one) and replaces each through Proc.
QORDESIGN_EXPORT QString WalkThroughIdents(PTypeInfo APTI, const QString &Expr, const TIdentsWalkThroughProc &Proc);

// The display label of a class, through the manager's dictionary (the
// class name itself without one); callers that show a class to the user
// go through here so that a translation reaches all of them at once.
// Empty for null.
QORDESIGN_EXPORT QString ClassToTransedName(const QMetaObject *AClass);

// The display name of a component: its name, unchanged ("" for null). Owner
// is not used.
QORDESIGN_EXPORT QString GetCompTransedName(QObject *Comp, QObject *Owner);
