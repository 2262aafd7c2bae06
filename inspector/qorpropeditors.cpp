// SPDX-License-Identifier: MIT
#include "inspector/qorpropeditors.h"

#include "foundation/qorcomponents.h"
#include "foundation/qorerror.h"
#include "foundation/qortypinfo.h"
#include "foundation/vhosysutils.h"
#include "inspector/qorpropdetail.h"
#include "foundation/vhortti_p.h"

#include <QCoreApplication>
#include <QColorDialog>
#include <QDate>
#include <QDateTime>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QFontDialog>
#include <QIcon>
#include <QKeySequence>
#include <QKeySequenceEdit>
#include <QListWidget>
#include <QMargins>
#include <QPixmap>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QSizePolicy>
#include <QTime>
#include <QVBoxLayout>

#include <functional>
#include <optional>

namespace {

void forEachObject(const TPropertyEditor &Editor, const std::function<void(QObject *, PPropInfo)> &Do)
{
    for (int i = 0; i < Editor.PropCount(); ++i) {
        if (QObject *object = Editor.GetComponent(i))
            Do(object, Editor.GetPropInfo(i));
    }
}

// A modal dialog with OK and Cancel under its content.
class EditorDialog : public QDialog
{
public:
    EditorDialog(const char *Name, const QString &Title, QWidget *Content)
        : QDialog(TPropertyEditor::DialogParent())
    {
        setObjectName(QLatin1String(Name));
        setWindowTitle(Title);
        auto *layout = new QVBoxLayout(this);
        layout->addWidget(Content, 1);
        auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
        buttons->setObjectName(QStringLiteral("Buttons"));
        connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
        connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
        layout->addWidget(buttons);
    }
};

QString policyName(QSizePolicy::Policy Policy)
{
    return QString::fromLatin1(QMetaEnum::fromType<QSizePolicy::Policy>().valueToKey(Policy));
}

// The short text of a value with fields.
QString valueText(const QVariant &Value, PTypeInfo Type)
{
    if (Value.metaType() == QMetaType::fromType<QMargins>()) {
        const QMargins m = Value.value<QMargins>();
        return QStringLiteral("[%1, %2, %3, %4]").arg(m.left()).arg(m.top()).arg(m.right()).arg(m.bottom());
    }
    switch (Value.metaType().id()) {
    case QMetaType::QSize: {
        const QSize s = Value.toSize();
        return QStringLiteral("%1 x %2").arg(s.width()).arg(s.height());
    }
    case QMetaType::QPoint: {
        const QPoint p = Value.toPoint();
        return QStringLiteral("%1, %2").arg(p.x()).arg(p.y());
    }
    case QMetaType::QRect: {
        const QRect r = Value.toRect();
        return QStringLiteral("[(%1, %2), %3 x %4]").arg(r.x()).arg(r.y()).arg(r.width()).arg(r.height());
    }
    case QMetaType::QSizePolicy: {
        const QSizePolicy p = Value.value<QSizePolicy>();
        return QStringLiteral("[%1, %2, %3, %4]")
            .arg(policyName(p.horizontalPolicy()), policyName(p.verticalPolicy()))
            .arg(p.horizontalStretch())
            .arg(p.verticalStretch());
    }
    case QMetaType::QFont: {
        const QFont f = Value.value<QFont>();
        const QString size = f.pointSize() > 0 ? QString::number(f.pointSize()) : QStringLiteral("%1px").arg(f.pixelSize());
        return QStringLiteral("%1, %2").arg(f.family(), size);
    }
    default:
        return QLatin1Char('[') + (Type ? Type->Name : QString()) + QLatin1Char(']');
    }
}

// The values with fields whose short text can be typed back.
bool hasTextForm(PTypeInfo Type)
{
    if (!Type)
        return false;
    const QMetaType meta = Type->MetaType;
    return meta == QMetaType::fromType<QSize>() || meta == QMetaType::fromType<QPoint>()
        || meta == QMetaType::fromType<QRect>() || meta == QMetaType::fromType<QMargins>()
        || meta == QMetaType::fromType<QSizePolicy>() || meta == QMetaType::fromType<QFont>();
}

[[noreturn]] void refuseText(const QString &Text, const char *What)
{
    throw EConvertError(QCoreApplication::translate("TPropertyEditor", "'%1' is not %2")
                            .arg(Text, QCoreApplication::translate("TPropertyEditor", What)));
}

// The whole numbers of a typed value: each with an optional sign, apart
// from the next by a comma, blanks or an "x" ("80x30", "80 x 30",
// "80, 30"), brackets and parentheses allowed anywhere ("[(10, 20), 80 x
// 30]"). Empty when the text holds anything else, or not Count numbers.
QList<int> numbersIn(const QString &Text, int Count)
{
    static const QString separators = QStringLiteral(",xX[]()");
    QList<int> numbers;
    bool apart = true;
    for (qsizetype i = 0; i < Text.size();) {
        const QChar c = Text.at(i);
        const bool sign = (c == QLatin1Char('-') || c == QLatin1Char('+')) && i + 1 < Text.size()
            && Text.at(i + 1).isDigit();
        if (c.isDigit() || sign) {
            if (!apart)
                return {};
            qsizetype end = i + 1;
            while (end < Text.size() && Text.at(end).isDigit())
                ++end;
            bool ok = false;
            const int number = QStringView(Text).mid(i, end - i).toInt(&ok);
            if (!ok)
                return {};
            numbers.append(number);
            i = end;
            apart = false;
        } else if (c.isSpace() || separators.contains(c)) {
            apart = true;
            ++i;
        } else {
            return {};
        }
    }
    if (numbers.size() != Count)
        return {};
    return numbers;
}

// A size policy typed as "[Minimum, Fixed, 0, 0]": both policies by name
// (without regard to case), then optionally both stretch factors (0 to
// 255); brackets optional, commas or blanks between. Policies and
// stretches come back through the arguments; false when the text is none.
bool sizePolicyIn(const QString &Text, QSizePolicy::Policy &Horizontal, QSizePolicy::Policy &Vertical,
                  std::optional<std::pair<int, int>> &Stretches)
{
    QString text = Text.trimmed();
    if (text.startsWith(QLatin1Char('[')) && text.endsWith(QLatin1Char(']')))
        text = text.mid(1, text.size() - 2);
    static const QRegularExpression apart(QStringLiteral("[,\\s]+"));
    const QStringList parts = text.split(apart, Qt::SkipEmptyParts);
    if (parts.size() != 2 && parts.size() != 4)
        return false;
    const QMetaEnum policies = QMetaEnum::fromType<QSizePolicy::Policy>();
    auto policy = [&policies](const QString &Name, QSizePolicy::Policy &Out) {
        for (int i = 0; i < policies.keyCount(); ++i) {
            if (Name.compare(QLatin1String(policies.key(i)), Qt::CaseInsensitive) == 0) {
                Out = QSizePolicy::Policy(policies.value(i));
                return true;
            }
        }
        return false;
    };
    if (!policy(parts[0], Horizontal) || !policy(parts[1], Vertical))
        return false;
    Stretches.reset();
    if (parts.size() == 4) {
        bool okH = false, okV = false;
        const int h = parts[2].toInt(&okH);
        const int v = parts[3].toInt(&okV);
        if (!okH || !okV || h < 0 || h > 255 || v < 0 || v > 255)
            return false;
        Stretches = std::make_pair(h, v);
    }
    return true;
}

// A font typed as "Sans Serif, 9": the family, then after the last comma
// the size in points, or in pixels with "px" ("Sans Serif, 12px"). Without
// a comma the text is the family alone and the size stays. False when the
// family is empty or the size not a whole number above 0.
bool fontIn(const QString &Text, QString &Family, int &Points, int &Pixels)
{
    const QString text = Text.trimmed();
    const qsizetype comma = text.lastIndexOf(QLatin1Char(','));
    Family = (comma < 0 ? text : text.left(comma)).trimmed();
    Points = Pixels = 0;
    if (comma >= 0) {
        QString size = text.mid(comma + 1).trimmed();
        const bool pixels = size.endsWith(QLatin1String("px"), Qt::CaseInsensitive);
        if (pixels)
            size.chop(2);
        bool ok = false;
        const int number = size.trimmed().toInt(&ok);
        if (!ok || number <= 0)
            return false;
        (pixels ? Pixels : Points) = number;
    }
    return !Family.isEmpty();
}

// The slots of a form a signal can be connected to, one per name, the
// first that fits.
QList<QMetaMethod> fittingSlots(const QObject *Form, const QMetaMethod &Signal)
{
    QList<QMetaMethod> fitting;
    QStringList seen;
    if (!Form)
        return fitting;
    const QMetaObject *meta = Form->metaObject();
    for (int i = 0; i < meta->methodCount(); ++i) {
        const QMetaMethod method = meta->method(i);
        if (method.methodType() != QMetaMethod::Slot || method.access() != QMetaMethod::Public)
            continue;
        const QString name = QString::fromLatin1(method.name());
        if (seen.contains(name) || !QMetaObject::checkConnectArgs(Signal, method))
            continue;
        seen.append(name);
        fitting.append(method);
    }
    return fitting;
}

QVariantMap eventConnections(const QObject *Component)
{
    return Component->property(QorEventConnectionsProperty()).toMap();
}

} // namespace

const char *QorEventConnectionsProperty()
{
    return "qorEventConnections";
}

QByteArray QorPictureFileProperty(const QString &PropName)
{
    return "qorPictureFile_" + PropName.toLatin1();
}

// ---- Numbers ----

QString TInt64Property::GetValueAt(int Index) const
{
    QObject *object = GetComponent(Index);
    if (!object)
        return {};
    const QVariant value = GetPropValue(object, GetPropInfo(Index));
    return value.metaType().id() == QMetaType::ULongLong ? QString::number(value.toULongLong())
                                                          : QString::number(value.toLongLong());
}

void TInt64Property::SetValue(const QString &Value)
{
    const PTypeInfo type = GetPropType();
    const bool isUnsigned = type && type->MetaType.id() == QMetaType::ULongLong;
    QString text = Value.trimmed();
    int base = 10;
    if (text.startsWith(QLatin1Char('$'))) {
        text = text.mid(1);
        base = 16;
    } else if (text.startsWith(QLatin1String("0x"), Qt::CaseInsensitive)) {
        text = text.mid(2);
        base = 16;
    }
    bool ok = false;
    QVariant value;
    if (isUnsigned || base == 16) {
        // Hexadecimal texts are bit patterns, as the 32-bit editor reads them.
        const qulonglong bits = text.toULongLong(&ok, base);
        value = isUnsigned ? QVariant(bits) : QVariant(qlonglong(bits));
    } else {
        value = QVariant(text.toLongLong(&ok, base));
    }
    if (!ok)
        throw EConvertError(QCoreApplication::translate("TPropertyEditor", "'%1' is not a valid integer value").arg(Value));
    SetVarValue(value);
}

QString TCharProperty::GetValueAt(int Index) const
{
    QObject *object = GetComponent(Index);
    if (!object)
        return {};
    const QChar c = GetPropValue(object, GetPropInfo(Index)).value<QChar>();
    if (c.isNull())
        return {};
    return c.isPrint() ? QString(c) : QLatin1Char('#') + QString::number(c.unicode());
}

void TCharProperty::SetValue(const QString &Value)
{
    QChar c;
    if (Value.size() == 1) {
        c = Value.at(0);
    } else if (Value.size() > 1 && Value.startsWith(QLatin1Char('#'))) {
        bool ok = false;
        const uint code = Value.mid(1).toUInt(&ok);
        if (!ok || code > 0xFFFF)
            throw EConvertError(QCoreApplication::translate("TPropertyEditor", "'%1' is not a valid character").arg(Value));
        c = QChar(char16_t(code));
    } else if (!Value.isEmpty()) {
        throw EConvertError(QCoreApplication::translate("TPropertyEditor", "'%1' is not a valid character").arg(Value));
    }
    SetVarValue(QVariant::fromValue(c));
}

// ---- Texts ----

TPropertyAttributes TStringProperty::GetAttributes() const
{
    return TPropertyEditor::GetAttributes() | paDialog;
}

void TStringProperty::Edit()
{
    auto *text = new QPlainTextEdit;
    text->setObjectName(QStringLiteral("Text"));
    text->setPlainText(GetValue());
    EditorDialog dialog("QorTextDialog", QCoreApplication::translate("TPropertyEditor", "Edit Text"), text);
    dialog.resize(420, 260);
    if (dialog.exec() == QDialog::Accepted)
        SetValue(text->toPlainText());
}

// ---- Enumerations ----

TPropertyAttributes TEnumProperty::GetAttributes() const
{
    return TPropertyEditor::GetAttributes() | paValueList | paSortList;
}

void TEnumProperty::GetValues(const TGetStrProc &Proc) const
{
    QStringList names;
    ListEnumValues(GetPropType(), names);
    for (const QString &name : names)
        Proc(name);
}

TPropertyAttributes TBoolProperty::GetAttributes() const
{
    return TPropertyEditor::GetAttributes() | paValueList;
}

void TBoolProperty::GetValues(const TGetStrProc &Proc) const
{
    Proc(BoolToStr(false, true));
    Proc(BoolToStr(true, true));
}

// ---- Sets ----

TPropertyAttributes TSetProperty::GetAttributes() const
{
    return TPropertyEditor::GetAttributes() | paSubProperties | paReadOnly;
}

void TSetProperty::GetProperties(const TGetPropProc &Proc) const
{
    const PTypeInfo type = GetPropType();
    QStringList elements;
    ListEnumValues(type ? type->TypeData.CompType : nullptr, elements);
    for (const QString &element : elements) {
        auto editor = std::make_shared<TSetElementProperty>(Designer(), PropCount(), element);
        for (int i = 0; i < PropCount(); ++i)
            editor->SetPropEntry(i, GetComponent(i), GetPropInfo(i));
        editor->Initialize();
        Proc(editor);
    }
}

TSetElementProperty::TSetElementProperty(IDesigner *Designer, int PropCount, const QString &Element)
    : TPropertyEditor(Designer, PropCount)
    , m_element(Element)
{
}

TPropertyAttributes TSetElementProperty::GetAttributes() const
{
    return TPropertyEditor::GetAttributes() | paValueList;
}

QString TSetElementProperty::GetName() const
{
    return m_element;
}

QString TSetElementProperty::GetValueAt(int Index) const
{
    QObject *object = GetComponent(Index);
    if (!object)
        return {};
    const PPropInfo info = GetPropInfo(Index);
    const qint64 bit = StringToSet(info->PropType, m_element);
    return BoolToStr((GetOrdProp(object, info) & bit) == bit, true);
}

void TSetElementProperty::SetValue(const QString &Value)
{
    const bool include = StrToBool(Value);
    forEachObject(*this, [this, include](QObject *Object, PPropInfo Info) {
        const qint64 bit = StringToSet(Info->PropType, m_element);
        const qint64 bits = GetOrdProp(Object, Info);
        SetPropValue(Object, Info, QVariant(int(include ? bits | bit : bits & ~bit)));
    });
    Modified();
}

void TSetElementProperty::GetValues(const TGetStrProc &Proc) const
{
    Proc(BoolToStr(true, true));
    Proc(BoolToStr(false, true));
}

// ---- Colours and cursors ----

TPropertyAttributes TColorProperty::GetAttributes() const
{
    return TPropertyEditor::GetAttributes() | paDialog | paValueList;
}

void TColorProperty::GetValues(const TGetStrProc &Proc) const
{
    for (const QString &name : ColorValueNames())
        Proc(name);
}

void TColorProperty::Edit()
{
    QObject *first = GetComponent(0);
    const QColor current = first ? GetPropValue(first, GetPropInfo(0)).value<QColor>() : QColor();
    QColorDialog dialog(current.isValid() ? current : QColor(Qt::white), DialogParent());
    dialog.setObjectName(QStringLiteral("QorColorDialog"));
    dialog.setOption(QColorDialog::DontUseNativeDialog);
    dialog.setOption(QColorDialog::ShowAlphaChannel);
    if (dialog.exec() != QDialog::Accepted)
        return;
    SetVarValue(dialog.selectedColor());
}

TPropertyAttributes TCursorProperty::GetAttributes() const
{
    return TPropertyEditor::GetAttributes() | paValueList;
}

void TCursorProperty::GetValues(const TGetStrProc &Proc) const
{
    for (const QString &name : CursorValueNames())
        Proc(name);
}

// ---- Values with fields ----

TPropertyAttributes TClassProperty::GetAttributes() const
{
    // A value whose short text reads back can be typed as well.
    const TPropertyAttributes attributes = TPropertyEditor::GetAttributes() | paSubProperties;
    return hasTextForm(GetPropType()) ? attributes : attributes | paReadOnly;
}

QString TClassProperty::GetValueAt(int Index) const
{
    QObject *object = GetComponent(Index);
    if (!object)
        return {};
    const PPropInfo info = GetPropInfo(Index);
    return valueText(GetPropValue(object, info), info->PropType);
}

void TClassProperty::SetValue(const QString &Value)
{
    const PTypeInfo type = GetPropType();
    const QMetaType meta = type ? type->MetaType : QMetaType();
    // The text is read whole before any object is written.
    if (meta == QMetaType::fromType<QSize>()) {
        const QList<int> n = numbersIn(Value, 2);
        if (n.isEmpty())
            refuseText(Value, QT_TRANSLATE_NOOP("TPropertyEditor", "a size (width x height)"));
        SetVarValue(QSize(n[0], n[1]));
    } else if (meta == QMetaType::fromType<QPoint>()) {
        const QList<int> n = numbersIn(Value, 2);
        if (n.isEmpty())
            refuseText(Value, QT_TRANSLATE_NOOP("TPropertyEditor", "a point (x, y)"));
        SetVarValue(QPoint(n[0], n[1]));
    } else if (meta == QMetaType::fromType<QRect>()) {
        const QList<int> n = numbersIn(Value, 4);
        if (n.isEmpty())
            refuseText(Value, QT_TRANSLATE_NOOP("TPropertyEditor", "a rectangle ([(x, y), width x height])"));
        SetVarValue(QRect(n[0], n[1], n[2], n[3]));
    } else if (meta == QMetaType::fromType<QMargins>()) {
        const QList<int> n = numbersIn(Value, 4);
        if (n.isEmpty())
            refuseText(Value, QT_TRANSLATE_NOOP("TPropertyEditor", "margins ([left, top, right, bottom])"));
        SetVarValue(QVariant::fromValue(QMargins(n[0], n[1], n[2], n[3])));
    } else if (meta == QMetaType::fromType<QSizePolicy>()) {
        QSizePolicy::Policy horizontal, vertical;
        std::optional<std::pair<int, int>> stretches;
        if (!sizePolicyIn(Value, horizontal, vertical, stretches))
            refuseText(Value, QT_TRANSLATE_NOOP("TPropertyEditor", "a size policy ([horizontal, vertical, stretch, stretch])"));
        // Stretches left out stay each object's own.
        forEachObject(*this, [&](QObject *Object, PPropInfo Info) {
            QSizePolicy policy = GetPropValue(Object, Info).value<QSizePolicy>();
            policy.setHorizontalPolicy(horizontal);
            policy.setVerticalPolicy(vertical);
            if (stretches) {
                policy.setHorizontalStretch(stretches->first);
                policy.setVerticalStretch(stretches->second);
            }
            SetPropValue(Object, Info, QVariant::fromValue(policy));
        });
        Modified();
    } else if (meta == QMetaType::fromType<QFont>()) {
        QString family;
        int points = 0, pixels = 0;
        if (!fontIn(Value, family, points, pixels))
            refuseText(Value, QT_TRANSLATE_NOOP("TPropertyEditor", "a font (family, size)"));
        // The text names the family and the size only: each object keeps
        // the rest of its own font (bold, italic...).
        forEachObject(*this, [&](QObject *Object, PPropInfo Info) {
            QFont font = GetPropValue(Object, Info).value<QFont>();
            font.setFamily(family);
            if (points > 0)
                font.setPointSize(points);
            else if (pixels > 0)
                font.setPixelSize(pixels);
            SetPropValue(Object, Info, font);
        });
        Modified();
    } else {
        throw EPropertyError(QCoreApplication::translate("TPropertyEditor", "%1 is edited through its fields").arg(GetName()));
    }
}

void TClassProperty::GetProperties(const TGetPropProc &Proc) const
{
    QList<QObject *> values;
    forEachObject(*this, [&values](QObject *Object, PPropInfo Info) {
        if (QObject *value = GetObjectProp(Object, Info))
            values.append(value);
    });
    if (values.isEmpty())
        return;
    TClassInformation fields;
    fields.SetPTI(TypeInfoOfClass(InstanceClass(values.first())));
    for (PPropInfo field : fields.PropList()) {
        TPropertyEditorRef editor = CreatePropertyEditor(Designer(), values.first(), field, int(values.size()));
        if (!editor)
            continue;
        for (int i = 0; i < values.size(); ++i)
            editor->SetPropEntry(i, values[i], InstancePropInfo(values[i], field));
        editor->Initialize();
        Proc(editor);
    }
}

TPropertyAttributes TFontProperty::GetAttributes() const
{
    return TClassProperty::GetAttributes() | paDialog;
}

void TFontProperty::Edit()
{
    QObject *first = GetComponent(0);
    const QFont current = first ? GetPropValue(first, GetPropInfo(0)).value<QFont>() : QFont();
    QFontDialog dialog(current, DialogParent());
    dialog.setObjectName(QStringLiteral("QorFontDialog"));
    dialog.setOption(QFontDialog::DontUseNativeDialog);
    if (dialog.exec() != QDialog::Accepted)
        return;
    SetVarValue(dialog.selectedFont());
}

// ---- Key sequences ----

TPropertyAttributes TKeySequenceProperty::GetAttributes() const
{
    return TPropertyEditor::GetAttributes() | paDialog;
}

QString TKeySequenceProperty::GetValueAt(int Index) const
{
    QObject *object = GetComponent(Index);
    if (!object)
        return {};
    const PPropInfo info = GetPropInfo(Index);
    return GetPropValue(object, info).value<QKeySequence>().toString(QKeySequence::PortableText);
}

void TKeySequenceProperty::SetValue(const QString &Value)
{
    const QKeySequence sequence = QKeySequence::fromString(Value.trimmed(), QKeySequence::PortableText);
    bool known = sequence.isEmpty() == Value.trimmed().isEmpty();
    for (int i = 0; i < sequence.count() && known; ++i)
        known = sequence[i].key() != Qt::Key_unknown;
    if (!known)
        throw EConvertError(QCoreApplication::translate("TPropertyEditor", "'%1' is not a valid key sequence").arg(Value));
    SetVarValue(QVariant::fromValue(sequence));
}

void TKeySequenceProperty::Edit()
{
    auto *edit = new QKeySequenceEdit;
    edit->setObjectName(QStringLiteral("KeySequence"));
    QObject *first = GetComponent(0);
    if (first)
        edit->setKeySequence(GetPropValue(first, GetPropInfo(0)).value<QKeySequence>());
    EditorDialog dialog("QorKeySequenceDialog", QCoreApplication::translate("TPropertyEditor", "Key Sequence"), edit);
    if (dialog.exec() == QDialog::Accepted)
        SetVarValue(QVariant::fromValue(edit->keySequence()));
}

// ---- Pictures ----

TPropertyAttributes TPictureProperty::GetAttributes() const
{
    return TPropertyEditor::GetAttributes() | paDialog | paReadOnly;
}

QString TPictureProperty::GetValueAt(int Index) const
{
    QObject *object = GetComponent(Index);
    if (!object)
        return {};
    const PPropInfo info = GetPropInfo(Index);
    const QVariant value = GetPropValue(object, info);
    const bool none = value.metaType().id() == QMetaType::QIcon ? value.value<QIcon>().isNull()
                                                                 : value.value<QPixmap>().isNull();
    if (none)
        return QStringLiteral("(none)");
    const QString file = object->property(QorPictureFileProperty(info->Name).constData()).toString();
    return file.isEmpty() ? QLatin1Char('[') + info->PropType->Name + QLatin1Char(']') : QFileInfo(file).fileName();
}

void TPictureProperty::SetValue(const QString &Value)
{
    const QString text = Value.trimmed();
    LoadFile(text == QLatin1String("(none)") ? QString() : text);
}

void TPictureProperty::LoadFile(const QString &FileName)
{
    const PTypeInfo type = GetPropType();
    const bool icon = type && type->MetaType.id() == QMetaType::QIcon;
    QVariant value;
    if (FileName.isEmpty()) {
        value = icon ? QVariant(QIcon()) : QVariant(QPixmap());
    } else {
        const QPixmap picture(FileName);
        if (picture.isNull())
            throw EConvertError(QCoreApplication::translate("TPropertyEditor", "'%1' is not an image file").arg(FileName));
        value = icon ? QVariant(QIcon(picture)) : QVariant(picture);
    }
    forEachObject(*this, [&](QObject *Object, PPropInfo Info) {
        SetPropValue(Object, Info, value);
        Object->setProperty(QorPictureFileProperty(Info->Name).constData(),
                            FileName.isEmpty() ? QVariant() : QVariant(FileName));
    });
    Modified();
}

void TPictureProperty::Edit()
{
    QFileDialog dialog(DialogParent(), QCoreApplication::translate("TPropertyEditor", "Choose Image"));
    dialog.setObjectName(QStringLiteral("QorPictureDialog"));
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.setNameFilter(QCoreApplication::translate("TPropertyEditor", "Images (*.png *.jpg *.jpeg *.bmp *.gif *.svg *.xpm)"));
    if (dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty())
        LoadFile(dialog.selectedFiles().first());
}

// ---- String lists ----

TPropertyAttributes TStringListProperty::GetAttributes() const
{
    return TPropertyEditor::GetAttributes() | paDialog | paReadOnly;
}

QString TStringListProperty::GetValueAt(int Index) const
{
    QObject *object = GetComponent(Index);
    if (!object)
        return {};
    const PPropInfo info = GetPropInfo(Index);
    return QLatin1Char('[') + GetPropValue(object, info).toStringList().join(QStringLiteral(", ")) + QLatin1Char(']');
}

void TStringListProperty::SetValue(const QString &Value)
{
    // One item per line, as the dialog writes them.
    SetVarValue(Value.isEmpty() ? QStringList() : Value.split(QLatin1Char('\n')));
}

void TStringListProperty::Edit()
{
    auto *text = new QPlainTextEdit;
    text->setObjectName(QStringLiteral("Lines"));
    QObject *first = GetComponent(0);
    if (first)
        text->setPlainText(GetPropValue(first, GetPropInfo(0)).toStringList().join(QLatin1Char('\n')));
    EditorDialog dialog("QorStringsDialog", QCoreApplication::translate("TPropertyEditor", "String List"), text);
    dialog.resize(360, 280);
    if (dialog.exec() == QDialog::Accepted)
        SetValue(text->toPlainText());
}

// ---- Dates and times ----

QString TDateTimeProperty::GetValueAt(int Index) const
{
    QObject *object = GetComponent(Index);
    if (!object)
        return {};
    const PPropInfo info = GetPropInfo(Index);
    const QVariant value = GetPropValue(object, info);
    switch (value.metaType().id()) {
    case QMetaType::QDate: return value.toDate().toString(Qt::ISODate);
    case QMetaType::QTime: return value.toTime().toString(QStringLiteral("HH:mm:ss"));
    default: return value.toDateTime().toString(Qt::ISODate);
    }
}

void TDateTimeProperty::SetValue(const QString &Value)
{
    const QString text = Value.trimmed();
    const PTypeInfo type = GetPropType();
    const int id = type ? type->MetaType.id() : 0;
    QVariant value;
    bool valid = true;
    switch (id) {
    case QMetaType::QDate: {
        const QDate date = QDate::fromString(text, Qt::ISODate);
        valid = date.isValid();
        value = date;
        break;
    }
    case QMetaType::QTime: {
        const QTime time = QTime::fromString(text, Qt::ISODate);
        valid = time.isValid();
        value = time;
        break;
    }
    default: {
        const QDateTime dateTime = QDateTime::fromString(text, Qt::ISODate);
        valid = dateTime.isValid();
        value = dateTime;
        break;
    }
    }
    // An empty text clears the value: a null date, time or moment.
    if (text.isEmpty())
        value = QVariant(type ? type->MetaType : QMetaType());
    else if (!valid)
        throw EConvertError(QCoreApplication::translate("TPropertyEditor", "'%1' is not a valid date or time").arg(Value));
    SetVarValue(value);
}

// ---- Other values ----

TPropertyAttributes TRecordProperty::GetAttributes() const
{
    return TPropertyEditor::GetAttributes() | paReadOnly;
}

QString TRecordProperty::GetValueAt(int Index) const
{
    QObject *object = GetComponent(Index);
    if (!object)
        return {};
    const PPropInfo info = GetPropInfo(Index);
    const QVariant value = GetPropValue(object, info);
    const QString text = value.toString();
    return text.isEmpty() ? QLatin1Char('[') + info->PropType->Name + QLatin1Char(']') : text;
}

// ---- Component references ----

TPropertyAttributes TComponentProperty::GetAttributes() const
{
    return TPropertyEditor::GetAttributes() | paValueList | paSortList;
}

QString TComponentProperty::GetValueAt(int Index) const
{
    QObject *object = GetComponent(Index);
    if (!object)
        return {};
    const PPropInfo info = GetPropInfo(Index);
    QObject *held = GetObjectProp(object, info);
    return held ? CompToNSName(held, Owner(held), Owner(object)) : QString();
}

void TComponentProperty::SetValue(const QString &Value)
{
    QObject *first = GetComponent(0);
    if (!first)
        return;
    QObject *target = nullptr;
    if (!Value.trimmed().isEmpty()) {
        target = NSNameToComp(Value.trimmed(), Owner(first));
        if (!target)
            throw EPropertyError(QCoreApplication::translate("TPropertyEditor", "'%1' is not a component of the form").arg(Value));
    }
    // Every object is checked before any is written.
    const QMetaObject *cls = GetPropType()->TypeData.ClassType;
    if (target && !target->metaObject()->inherits(cls))
        throw EPropertyError(QCoreApplication::translate("TPropertyEditor", "'%1' is not a %2").arg(Value, QorClassName(cls)));
    forEachObject(*this, [target](QObject *Object, PPropInfo Info) { SetObjectProp(Object, Info, target, true); });
    Modified();
}

void TComponentProperty::GetValues(const TGetStrProc &Proc) const
{
    QObject *first = GetComponent(0);
    QObject *form = first ? Owner(first) : nullptr;
    const PTypeInfo type = GetPropType();
    if (!form || !type || !type->TypeData.ClassType)
        return;
    for (QObject *component : ComponentList(form)) {
        if (component->metaObject()->inherits(type->TypeData.ClassType) && !IsQorDesignObject(component)
            && !component->objectName().trimmed().isEmpty())
            Proc(CompToNSName(component, form, form));
    }
}

// ---- Events ----

TPropertyAttributes TMethodProperty::GetAttributes() const
{
    return TPropertyEditor::GetAttributes() | paValueList | paSortList | paDialog;
}

QString TMethodProperty::GetValueAt(int Index) const
{
    QObject *object = GetComponent(Index);
    if (!object)
        return {};
    const PPropInfo info = GetPropInfo(Index);
    return eventConnections(object).value(info->Name).toString();
}

void TMethodProperty::SetValue(const QString &Value)
{
    const QString slotName = Value.trimmed();
    // Every object is checked before any is connected.
    forEachObject(*this, [&slotName](QObject *Object, PPropInfo Info) {
        if (slotName.isEmpty())
            return;
        QObject *form = Owner(Object);
        bool found = false;
        for (const QMetaMethod &slot : fittingSlots(form, Info->Method))
            found = found || QString::fromLatin1(slot.name()) == slotName;
        if (!found)
            throw EPropertyError(QCoreApplication::translate("TPropertyEditor", "'%1' is not a slot of the form that fits %2").arg(slotName, Info->Name));
    });
    forEachObject(*this, [&slotName](QObject *Object, PPropInfo Info) {
        QObject *form = Owner(Object);
        QVariantMap connections = eventConnections(Object);
        const QString previous = connections.value(Info->Name).toString();
        const QList<QMetaMethod> fitting = fittingSlots(form, Info->Method);
        for (const QMetaMethod &slot : fitting) {
            if (!previous.isEmpty() && QString::fromLatin1(slot.name()) == previous)
                QObject::disconnect(Object, Info->Method, form, slot);
        }
        if (slotName.isEmpty()) {
            connections.remove(Info->Name);
        } else {
            for (const QMetaMethod &slot : fitting) {
                if (QString::fromLatin1(slot.name()) == slotName) {
                    QObject::connect(Object, Info->Method, form, slot);
                    break;
                }
            }
            connections.insert(Info->Name, slotName);
        }
        Object->setProperty(QorEventConnectionsProperty(), connections.isEmpty() ? QVariant() : QVariant(connections));
    });
    Modified();
}

void TMethodProperty::GetValues(const TGetStrProc &Proc) const
{
    QObject *first = GetComponent(0);
    if (!first)
        return;
    for (const QMetaMethod &slot : fittingSlots(Owner(first), GetPropInfo(0)->Method))
        Proc(QString::fromLatin1(slot.name()));
}

void TMethodProperty::Edit()
{
    auto *list = new QListWidget;
    list->setObjectName(QStringLiteral("Slots"));
    list->addItem(QCoreApplication::translate("TPropertyEditor", "(none)"));
    QStringList names;
    GetValues([&names](const QString &Name) { names.append(Name); });
    names.sort(Qt::CaseInsensitive);
    list->addItems(names);
    const QString current = GetValue();
    const QList<QListWidgetItem *> found = list->findItems(current, Qt::MatchExactly);
    list->setCurrentRow(found.isEmpty() || current.isEmpty() ? 0 : list->row(found.first()));
    EditorDialog dialog("QorEventDialog", QCoreApplication::translate("TPropertyEditor", "Connect %1").arg(GetName()), list);
    QObject::connect(list, &QListWidget::itemDoubleClicked, &dialog, &QDialog::accept);
    if (dialog.exec() != QDialog::Accepted)
        return;
    SetValue(list->currentRow() <= 0 ? QString() : list->currentItem()->text());
}

// ---- Registration ----

namespace {

template<class Editor>
TPropertyEditorFactory factory()
{
    return [](IDesigner *Designer, int PropCount) { return std::make_shared<Editor>(Designer, PropCount); };
}

const bool registered = [] {
    SetKindPropertyEditor(tkInteger, factory<TIntegerProperty>());
    SetKindPropertyEditor(tkInt64, factory<TInt64Property>());
    SetKindPropertyEditor(tkFloat, factory<TFloatProperty>());
    SetKindPropertyEditor(tkChar, factory<TCharProperty>());
    SetKindPropertyEditor(tkWChar, factory<TCharProperty>());
    for (TTypeKind kind : {tkString, tkLString, tkWString})
        SetKindPropertyEditor(kind, factory<TStringProperty>());
    SetKindPropertyEditor(tkEnumeration, factory<TEnumProperty>());
    SetKindPropertyEditor(tkSet, factory<TSetProperty>());
    SetKindPropertyEditor(tkClass, factory<TClassProperty>());
    SetKindPropertyEditor(tkMethod, factory<TMethodProperty>());
    SetKindPropertyEditor(tkVariant, factory<TPropertyEditor>());
    for (TTypeKind kind : {tkUnknown, tkArray, tkRecord, tkInterface, tkDynArray})
        SetKindPropertyEditor(kind, factory<TRecordProperty>());
    RegisterPropertyEditor(TypeInfoOf<bool>(), nullptr, QString(), factory<TBoolProperty>());
    RegisterPropertyEditor(TypeInfoOf<QColor>(), nullptr, QString(), factory<TColorProperty>());
    RegisterPropertyEditor(TypeInfoOf<QCursor>(), nullptr, QString(), factory<TCursorProperty>());
    RegisterPropertyEditor(TypeInfoOf<QFont>(), nullptr, QString(), factory<TFontProperty>());
    RegisterPropertyEditor(TypeInfoOf<QObject>(), nullptr, QString(), factory<TComponentProperty>());
    RegisterPropertyEditor(TypeInfoOf<QKeySequence>(), nullptr, QString(), factory<TKeySequenceProperty>());
    RegisterPropertyEditor(TypeInfoOf<QIcon>(), nullptr, QString(), factory<TPictureProperty>());
    RegisterPropertyEditor(TypeInfoOf<QPixmap>(), nullptr, QString(), factory<TPictureProperty>());
    RegisterPropertyEditor(TypeInfoOf<QStringList>(), nullptr, QString(), factory<TStringListProperty>());
    for (PTypeInfo type : {TypeInfoOf<QDate>(), TypeInfoOf<QTime>(), TypeInfoOf<QDateTime>()})
        RegisterPropertyEditor(type, nullptr, QString(), factory<TDateTimeProperty>());
    return true;
}();

} // namespace
