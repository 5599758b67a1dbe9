#pragma once

#include "consent/rows/list_columns.h"
#include "tests/support/test_database.h"

#include <map>
#include <random>

/// One consent row by its columns' names; Null is "NULL".
using Row = std::map<QString, QString>;
/// By "patient/nDate/kind/deformity date".
using Rows = std::map<QString, Row>;

bool isDeformity(const Row &row);
/// The column of a row that a cell of the grid writes.
QString columnOf(const Row &row, ListColumn column);

/// @name Dates as they are stored, "NULL" for none
///@{
QDate day(const QString &text);
QString text(const QDate &date);
///@}

/// @name The rules, reckoned anew
///@{
/// The mid-month rule with six months: the end is that of the fifth month after the re-consent's, of the
/// sixth for one in the second half.
void propose(Row &row, const QDate &reconsent);
bool mayRenew(const Row &row);
QString renewedKeyOf(const Row &row);
/// The row that renewal makes of one, which loses its mark.
void addRenewed(Rows &rows, const QString &key, const Row &row);
/// A flag that nobody set may be stored as 0.
bool sameStored(const QString &column, const QString &a, const QString &b);
///@}

/// Nine patients and their consents, drawn at random, and a colleague who writes them.
class WalkedPractice {
protected:
    explicit WalkedPractice(unsigned seed) : m_random(seed) {}

    int one(int of) { return int(m_random() % unsigned(of)); }
    void fill();
    Rows stored() const;
    /// Changes some newest row.
    void colleague();

    TestDatabase m_database;

private:
    void insert(int patient, bool deformity);
    QString now();

    std::mt19937 m_random;
    int m_time = 0;
};
