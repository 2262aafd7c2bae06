// SPDX-License-Identifier: MIT
#include "inspector/qortransinspector.h"

#include "inspector/qorinspector.h"
#include "translation/qortransutils.h"

#include <QHash>

#include <memory>

namespace {

// The labels one inspector has shown, so that a repaint does not ask the
// manager again for each value. They hold as long as the manager's
// dictionary does; component references are always asked for, as the
// components they name may be renamed.
struct MemoKey
{
    PTypeInfo type;
    TTransRole role;
    QString ident;
    bool operator==(const MemoKey &other) const
    {
        return type == other.type && role == other.role && ident == other.ident;
    }
};

size_t qHash(const MemoKey &key, size_t seed = 0)
{
    return qHashMulti(seed, quintptr(key.type), int(key.role), key.ident);
}

struct LabelMemo
{
    quint64 generation = 0;
    QHash<MemoKey, QString> labels;
    static constexpr qsizetype limit = 5000;
};

QObject *ownerOf(TObjInspecList *List)
{
    auto *list = dynamic_cast<TObjInspecPropListEx *>(List);
    return list ? list->GetOwnerObject() : nullptr;
}

} // namespace

void QorTranslateInspector(TVhoObjInspector *Inspector, TQorTransMan *Manager)
{
    if (!Inspector)
        return;
    TQorTransMan *manager = Manager ? Manager : QorTransMan();
    auto memo = std::make_shared<LabelMemo>();
    Inspector->SetOnTranslateIdent(
        [manager, memo](TObjInspecList *Sender, PTypeInfo PTI, const QString &Src, TTransRole Role, QString &Dest) {
            if (!PTI || IsComponentPTI(PTI)) {
                Dest = manager->IdentToLabel(Role, PTI, Src, ownerOf(Sender));
                return;
            }
            manager->OpenDb();
            if (memo->generation != manager->Generation() || memo->labels.size() >= LabelMemo::limit) {
                memo->labels.clear();
                memo->generation = manager->Generation();
            }
            const MemoKey key{PTI, Role, Src};
            const auto known = memo->labels.constFind(key);
            if (known != memo->labels.constEnd()) {
                Dest = *known;
                return;
            }
            Dest = manager->IdentToLabel(Role, PTI, Src, ownerOf(Sender));
            memo->labels.insert(key, Dest);
        });
    Inspector->SetOnTranslateToIdent(
        [manager](TObjInspecList *Sender, PTypeInfo PTI, const QString &Src, TTransRole Role, QString &Dest) {
            Dest = manager->LabelToIdent(Role, PTI, Src, ownerOf(Sender));
        });
    if (Inspector->Translate())
        Inspector->Refresh();
    else
        Inspector->SetTranslate(true);
}

void QorUntranslateInspector(TVhoObjInspector *Inspector)
{
    if (!Inspector)
        return;
    Inspector->SetOnTranslateIdent({});
    Inspector->SetOnTranslateToIdent({});
    Inspector->Refresh();
}
