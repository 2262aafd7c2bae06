#include "translation/qortransutils.h"

#include <QMetaObject>
#include <QObject>

namespace {

// The naming functions below this layer reach the class labels through
// this object, so that a dictionary attached here renames new components
// without their callers changing.
class TransedClassLabels final : public IQorClassLabels
{
public:
    QString ClassLabel(const QMetaObject *AClass) const override { return ClassToTransedName(AClass); }
};

const TransedClassLabels transedClassLabels;

void installClassLabels()
{
    SetClassLabels(&transedClassLabels);
}
Q_CONSTRUCTOR_FUNCTION(installClassLabels)

} // namespace

QString ClassToTransedName(const QMetaObject *AClass)
{
    return AClass ? QString::fromLatin1(AClass->className()) : QString();
}

QString GetCompTransedName(QObject *Comp, QObject *Owner)
{
    Q_UNUSED(Owner);
    return Comp ? Comp->objectName() : QString();
}
