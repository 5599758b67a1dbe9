#pragma once

#include "app/base/result.h"
#include "setup/practice.h"

class Folders;

namespace setup {

enum class Engine { Embedded, PostgreSql, SqlServer };

/// What is asked for a new installation.
struct Answers {
    Engine engine = Engine::Embedded;
    QString file;   ///< of the embedded database
    QString server; ///< name, "name,port"; of SQL Server also "name\instance"
    QString database, user, password;
    Practice practice;
    bool sample = false; ///< patients of a made-up practice instead of the one described
    int screen = 0;      ///< at which it was left
};

/// What was answered before in this program folder, else what is proposed.
Answers rememberedAnswers(const Folders &folders);
/// Keeps all but the password until the installation is made. A failure names the file.
Result<> rememberAnswers(const Folders &folders, const Answers &answers);
void forgetAnswers(const Folders &folders);

/// The connection string for adodb.ini. Without a user SQL Server takes the one who is logged in.
Result<QString> connectionOf(const Answers &answers);

} // namespace setup
