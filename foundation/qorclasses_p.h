// SPDX-License-Identifier: MIT
// The class registry's answers for the library's own readers and writers,
// which take "no instance" as an answer rather than an exception.
#pragma once

class QObject;
struct QMetaObject;

// A fresh instance, without parent, of the class registered under this very
// meta-object; null for a class the registry does not make this way, or
// whose factory failed (reported to qor.foundation).
QObject *NewRegisteredInstance(const QMetaObject *Class);
