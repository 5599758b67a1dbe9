#pragma once

#include "viewer/document/document.h"

#include <QTemporaryDir>

/// A layout's elements around which the rest is written: `body` stands inside <layout …>.
std::shared_ptr<const Layout> layoutOf(const QByteArray &body, const QByteArray &attributes = "paper='A4'");

/// Records of a column a line, the first line naming the columns.
std::shared_ptr<const DataTable> tableOf(const QString &csv);

Report reportOf(const QByteArray &body, const QString &csv, const QByteArray &attributes = "paper='A4'");

/// The texts of a page, one a line, in the order in which they are drawn.
QString textOf(const Document &document, int page);
