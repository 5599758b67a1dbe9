#pragma once

#include "viewer/command/command_file.h"
#include "viewer/document/document.h"

#include <optional>

/// Loads the layouts and data that a job names; a layout file may itself be a finished document.
/// @param folder that relative paths count from
std::optional<Document> loadDocument(const Job &job, const QString &folder, Problem *problem);

/// Reads a command file and loads what it names; relative paths count from the file's folder.
std::optional<Document> loadCommandFile(const QString &path, Job *job, Problem *problem);
