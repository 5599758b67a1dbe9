#pragma once

#include <QString>
#include <QStringList>
#include <vector>

/// A column as schema.sql declares it.
struct SchemaColumn {
    QString name;
    QString type;   ///< in capitals, without its length
    int length = 0; ///< of a text; 0: none
    bool required = false;
};

struct SchemaIndex {
    QString name;
    QStringList columns;
    bool primaryKey = false;
};

struct SchemaTable {
    QString name;
    std::vector<SchemaColumn> columns;
    std::vector<SchemaIndex> indexes; ///< the primary key first
};

/// Takes schema.sql apart: tables in their order, with their columns and indexes.
std::vector<SchemaTable> parseSchema(const QString &sql);

/// What the program was built with.
const std::vector<SchemaTable> &programSchema();
