// SPDX-License-Identifier: MIT
// The library's exceptions. They are thrown only where an error is meant to
// reach the caller (a value that cannot be converted, a damaged component
// stream, an unknown class); code reached from the event loop catches them.
#pragma once

#include "qordesign_export.h"

#include <QString>

#include <exception>

class QORDESIGN_EXPORT EQorError : public std::exception
{
public:
    explicit EQorError(const QString &message);
    ~EQorError() override;

    const QString &message() const noexcept { return m_message; }
    const char *what() const noexcept override;

private:
    QString m_message;
    QByteArray m_utf8;
};

// A property that is missing or cannot take the value given.
class QORDESIGN_EXPORT EPropertyError : public EQorError
{
public:
    using EQorError::EQorError;
};

// A value text that does not convert to the property's type.
class QORDESIGN_EXPORT EConvertError : public EQorError
{
public:
    using EQorError::EQorError;
};

// A class name that the class registry does not know.
class QORDESIGN_EXPORT EClassNotFound : public EQorError
{
public:
    using EQorError::EQorError;
};

// A component stream that is damaged, truncated or not a component stream.
class QORDESIGN_EXPORT EReadError : public EQorError
{
public:
    using EQorError::EQorError;
};

// A component name that is not valid or already taken in its owner.
class QORDESIGN_EXPORT EComponentError : public EQorError
{
public:
    using EQorError::EQorError;
};

// A division by zero where an arrange operation divides by the number of
// spaces between controls.
class QORDESIGN_EXPORT EZeroDivide : public EQorError
{
public:
    using EQorError::EQorError;
};
