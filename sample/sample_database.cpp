#include "sample/sample_database.h"

#include "db/adodb.h"
#include "db/tables/schema.h"
#include "sample/bulk_database.h"
#include "sample/masters.h"
#include "sample/patients.h"
#include "sample/random.h"

using namespace Qt::Literals::StringLiterals;

namespace sample {

namespace {

bool isIndex(const QString &statement) {
    return statement.startsWith(u"CREATE INDEX");
}

Result<> load(const QString &path, QDate day, int patients) {
    BulkDatabase db(path);
    for (const QString &statement : schemaStatements())
        if (!isIndex(statement))
            db.execute(statement);
    Random random(20181001); // the seed is part of "the same arguments"
    const Masters masters = makeMasters(random, patients);
    loadFixedTables(db, day);
    loadMasters(db, masters, day);
    loadPatients(db, random, masters, patients, day);
    return db.finish();
}

/// Through the program's own connection, so that readings are sorted by the collation that will search them;
/// and after the load, for sorting once is far cheaper than keeping order all the time.
Result<> makeIndexes(const QString &path) {
    cT_ADODB db;
    db.iInit(u"Provider=SQLite;Data Source="_s + path);
    bool made = db.iConnect() == 0;
    for (const QString &statement : schemaStatements())
        if (made && isIndex(statement))
            made = db.iExecSQL(statement) == 0;
    // Counts for the planner, so that it does not start from an index that hardly narrows.
    made = made && db.iExecSQL(u"ANALYZE"_s) == 0;
    if (!made)
        return Failure{
            u"データベース「%1」に索引を作成できません。（%2）"_s.arg(path, db.sErrMsg().simplified())};
    return {};
}

} // namespace

Result<> makeSampleDatabase(const QString &path, QDate day, int patients) {
    const Result<> loaded = load(path, day, patients);
    return loaded ? makeIndexes(path) : loaded;
}

} // namespace sample
