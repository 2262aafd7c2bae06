// SPDX-License-Identifier: MIT
// Which component classes the end user may insert: the design class list
// (each class with its palette page and image), the list the palette tool
// bars take by default, the class images and the label a class shows.
#pragma once

#include "qordesign_export.h"

#include "foundation/qorclasses.h"
#include "foundation/vhortti.h"

#include <QIcon>
#include <QList>
#include <QObject>
#include <QSize>
#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

// One class of the list: the class (through PTI), its palette page and the
// index of its image.
class QORDESIGN_EXPORT TQorDesignClassInformation : public TClassInformation
{
public:
    TQorDesignClassInformation();
    ~TQorDesignClassInformation() override;

    // Index into the list's images; -1 for none.
    qint32 ImageIndex = -1;
    // The palette page the class is offered on.
    QString Pallete;
};

// The images of the classes, 24 by 24 pixels each. A QObject so that an
// application can own it like its other non-visual components.
class QORDESIGN_EXPORT TQorClassesImageList : public QObject
{
    Q_OBJECT

public:
    explicit TQorClassesImageList(QObject *Parent = nullptr);
    TQorClassesImageList(const TQorClassesImageList &) = delete;
    TQorClassesImageList &operator=(const TQorClassesImageList &) = delete;

    int Width() const { return m_size.width(); }
    int Height() const { return m_size.height(); }
    QSize Size() const { return m_size; }
    int Count() const { return int(m_icons.size()); }
    // Appends an image; returns its index.
    int Add(const QIcon &Icon);
    // The image at an index; a null icon out of range.
    QIcon Icon(int Index) const;
    void Clear() { m_icons.clear(); }

private:
    QSize m_size;
    QList<QIcon> m_icons;
};

// The classes the designer offers, in the order they were added. The list
// owns its entries. With AutoRegister (set at creation) a class added is
// registered with the class registry, so that components of it are read
// back from streams and the clipboard.
class QORDESIGN_EXPORT TQorDesignClassList
{
public:
    TQorDesignClassList();
    ~TQorDesignClassList();
    TQorDesignClassList(const TQorDesignClassList &) = delete;
    TQorDesignClassList &operator=(const TQorDesignClassList &) = delete;

    int Count() const { return int(m_items.size()); }
    // The class of an entry; null out of range.
    const QMetaObject *Classes(int Index) const;
    // Points an entry at another class.
    void SetClasses(int Index, const QMetaObject *Class);
    // The entry at an index; null out of range.
    TQorDesignClassInformation *ClassInfos(int Index) const;
    // Points an entry at the class Info describes (Info itself is not
    // stored).
    void SetClassInfos(int Index, const TQorDesignClassInformation *Info);

    // The images of the classes; referenced, not owned.
    TQorClassesImageList *Images() const { return m_images; }
    void SetImages(TQorClassesImageList *Images) { m_images = Images; }
    bool AutoRegister() const { return m_autoRegister; }
    // Turned on, every listed class is registered.
    void SetAutoRegister(bool Value);

    // Adds a class on a page with an image index. With Unique, a class
    // already listed is not added again and -1 comes back; otherwise the
    // new entry's index. With Register (and AutoRegister) the class is
    // registered: with Factory when one is given, else through an
    // invokable constructor; a class already registered keeps its factory.
    int AddClass(const QMetaObject *Class, const QString &Pallete, int ImageIndex, bool Unique, bool Register,
                 TComponentFactory Factory = {});
    // The same for a class with a default constructor.
    template<class T>
    int AddClass(const QString &Pallete, int ImageIndex, bool Unique = true, bool Register = true)
    {
        return AddClass(&T::staticMetaObject, Pallete, ImageIndex, Unique, Register,
                        [] { return static_cast<QObject *>(new T()); });
    }
    // Appends an entry the caller made; the list owns it from now on.
    int AddClassInfo(TQorDesignClassInformation *Info);
    // The first entry of exactly that class (not of a subclass); -1 when
    // none.
    int ClassIndex(const QMetaObject *Class) const;
    bool ClassExists(const QMetaObject *Class) const { return ClassIndex(Class) >= 0; }
    // The index of that very entry; -1 when it is not in the list.
    int ClassInfoIndex(const TQorDesignClassInformation *Info) const;
    void DelClass(const QMetaObject *Class);
    void DelClassInfo(int Index);
    // Empties the list. The entries are freed from the last down to the
    // second; the first is only taken out of the list and stays alive
    // until the list itself goes, so that whoever holds it may go on
    // reading it.
    void ClearClasses();
    // Registers every listed class.
    void RegisterAllClasses();
    // The distinct page names, in the order they first appear; empty
    // names left out with SkipEmpty.
    void FillPalleteStrings(QStringList &Strings, bool SkipEmpty) const;

private:
    void registerClass(const QMetaObject *Class, const TComponentFactory &Factory);

    std::vector<std::unique_ptr<TQorDesignClassInformation>> m_items;
    // The first entries ClearClasses took out of the list.
    std::vector<std::unique_ptr<TQorDesignClassInformation>> m_keptFirsts;
    std::vector<std::pair<const QMetaObject *, TComponentFactory>> m_factories;
    TQorClassesImageList *m_images = nullptr;
    bool m_autoRegister = true;
};

// The list new palette tool bars take; null until the application sets
// one. The application keeps it alive while it is set.
QORDESIGN_EXPORT TQorDesignClassList *DefDesignClassList();
QORDESIGN_EXPORT void SetDefDesignClassList(TQorDesignClassList *List);

// The label a class shows on the palette: its translated label from the
// translation manager, else its class name.
QORDESIGN_EXPORT QString GetClassLabel(const QMetaObject *Class);
