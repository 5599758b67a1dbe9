#pragma once

#include "app/base/result.h"

#include <QString>

class Folders;

/// This program's own version, "1.2.0". What Version.ini says is the installation's.
QString ownVersion();

/// Whether a version is older than another: 1.9.0 is older than 1.10.0, and none is older than any.
bool isOlderVersion(const QString &version, const QString &than);

/// The newest version of this program that has worked in the installation, this run's included. It is kept
/// in プログラム版.ini of the data folder, where older programs on other PCs find it.
Result<QString> newestVersionUsed(const Folders &folders);
