#include "inspector/qortransinspector.h"

#include "inspector/qorinspector.h"
#include "translation/qortransutils.h"

namespace {

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
    Inspector->SetOnTranslateIdent(
        [manager](TObjInspecList *Sender, PTypeInfo PTI, const QString &Src, TTransRole Role, QString &Dest) {
            Dest = manager->IdentToLabel(Role, PTI, Src, ownerOf(Sender));
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
