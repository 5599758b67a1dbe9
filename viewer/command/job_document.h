#pragma once

#include "viewer/command/command_file.h"
#include "viewer/document/document.h"

#include <optional>

/// Full path of a file that a command file names: backslashes separate folders, a relative name counts from
/// `folder`, and a file whose name differs in case only is found.
QString jobPath(const QString &folder, const QString &name);

/// What came of a job's reports.
struct LoadedJob {
    std::vector<Report> reports;
    QString title;
    QStringList failures; ///< one sentence a report that could not be loaded, naming it
    QStringList notes;    ///< what a finished document among them says was left out when it was built
    Problem first;        ///< the first failure

    Document document() const { return Document(reports, title); }
};

/// Loads the layouts and data that a job names and goes on past reports that cannot be loaded. A layout file
/// may itself be a finished document.
LoadedJob loadReports(const Job &job, const QString &folder);

/// All reports of a job, or none.
/// @param folder that relative paths count from
std::optional<Document> loadDocument(const Job &job, const QString &folder, Problem *problem);

/// Reads the command file's bytes and what they ask for, without loading it.
std::optional<Job> loadJob(const QString &path, Problem *problem);

/// Reads a command file and loads what it names; relative paths count from the file's folder.
std::optional<Document> loadCommandFile(const QString &path, Job *job, Problem *problem);
