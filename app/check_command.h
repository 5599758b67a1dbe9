#pragma once

class Folders;
class QTextStream;

/// douisho --check: says on the stream whether the database of adodb.ini has what the program uses.
/// @return the exit code: 0 it fits, 1 there are findings, 2 it could not be looked at
int runCheckCommand(const Folders &folders, QTextStream &out);
