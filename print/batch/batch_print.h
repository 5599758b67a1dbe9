#pragma once

#include "app/base/result.h"
#include "print/engine/print_files.h"

#include <QString>
#include <QStringList>
#include <chrono>
#include <functional>
#include <vector>

class HandedDocuments;
struct Environment;

/// One report of a batch, its data file written.
struct BatchReport {
    QString subject; ///< whom it concerns, for messages
    QString name;    ///< titles are this and the running number: "同意書" gives 同意書1, 同意書2 …
    QString dataName;
    QString dataFile;  ///< full path
    QString imageItem; ///< item whose value is a picture's path; may be empty
    QString layout;    ///< full path
};

/// What a batch prints, the one shape in which every kind of document is handed to it.
struct BatchDocument {
    int count = 0; ///< of reports
    /// Writes the data of report `position` (from 0) into the batch's files and describes it; a failure ends
    /// the batch. Files that two reports have under one name are one: those of the next chunk are written
    /// while the builder still reads.
    std::function<Result<BatchReport>(int position, PrintFiles &files)> make;
};

enum class BatchPaper { A4, Custom };

/// How a batch is printed.
struct BatchOrder {
    QString commandFile = QStringLiteral("Com.dat"); ///< set printing: "DouiCom.dat"
    BatchPaper paper = BatchPaper::A4;
    bool preview = false; ///< show, not print
    /// What a chunk may take in the image builder; then it is ended and the next chunk is tried.
    std::chrono::milliseconds builderTimeout = std::chrono::minutes(5);
    HandedDocuments *sent = nullptr; ///< takes what is handed over
};

/// A chunk of at most 100 reports.
struct BatchChunk {
    enum class State {
        Done,       ///< built and handed to the viewer
        SomeFailed, ///< handed to the viewer without the reports that `reason` names
        BuilderMissing,
        BuilderFailed,
        BuilderHung,
        ViewerMissing, ///< the document is built, but nothing shows or prints it
        NotWritten,    ///< the work folder takes no files
        FolderBusy,    ///< another PC printed all the time
    };
    int number = 0; ///< from 1
    int reports = 0;
    QString first, last; ///< whom its first and its last report concern
    QString document;    ///< full path
    State state = State::Done;
    QString reason;     ///< of what went wrong, for the user
    QStringList failed; ///< whom the reports concern that are not in the document

    /// Whether no later chunk is tried.
    bool endsBatch() const {
        return state == State::BuilderMissing || state == State::ViewerMissing ||
               state == State::NotWritten || state == State::FolderBusy;
    }
};

struct BatchResult {
    std::vector<BatchChunk> chunks;
    QStringList missingLayouts; ///< "name（layout）" of the reports left out for want of their layout file
    /// Positions of the reports handed to the viewer, in their order: what has left, however the batch ended.
    /// Where the builder left out reports and does not say which, none of its chunk counts.
    std::vector<int> handed;
    int asked = 0; ///< for; of a preview what one window can show
    bool cancelled = false;

    int reports() const { return int(handed.size()); }
    /// Whether the report at a position was handed to the viewer.
    bool left(int position) const;

    /// Whether every report asked for was handed over and none failed.
    bool allPrinted() const;
};

/// Prints many reports: for every chunk of 100 a command file, a document made by the image builder, and the
/// viewer started with it. A preview is one window: our viewer shows all chunks as one document, another one
/// the first chunk alone.
class BatchPrint {
public:
    static constexpr int reportsInChunk = 100;

    /// Called before each chunk and many times a second while the builder works: reports of finished chunks,
    /// all. False ends the batch before its next chunk; a chunk that was begun is finished.
    using Progress = std::function<bool(int done, int all)>;

    BatchPrint(Environment &environment, BatchOrder order);

    /// What to ask before a preview that cannot show all; empty where it can.
    static QString previewQuestion(const Environment &environment, int count);

    BatchResult run(const BatchDocument &document, const Progress &goOn);

private:
    Environment &m_environment;
    BatchOrder m_order;
};
