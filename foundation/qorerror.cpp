// SPDX-License-Identifier: MIT
#include "qorerror.h"

EQorError::EQorError(const QString &message)
    : m_message(message)
    , m_utf8(message.toUtf8())
{
}

EQorError::~EQorError() = default;

const char *EQorError::what() const noexcept
{
    return m_utf8.constData();
}
