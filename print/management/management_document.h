#pragma once

#include "app/base/messages.h"
#include "print/engine/data_file.h"
#include "print/engine/wfd_print_exe.h"

#include <optional>

struct Environment;

/// An item of the layout that is the same on every page.
struct FixedItem {
    QString section, item, value;
};

/// A document of the management screens that goes through one data file: what it says and what there is to
/// say about it.
struct ManagementDocument {
    QString layout;   ///< file name in the system folder
    QString dataName; ///< for the engine; the data file is named after it
    DataFile data;
    std::vector<FixedItem> fixed{};
    QStringList notes{}; ///< paragraphs that the user has to agree to
    QString empty{};     ///< said where there are no data
    qint64 rows = 0;     ///< that it is made from
    qint64 documents = 1;
    QString count{};    ///< how much comes out: 台帳 5 件
    QString reminder{}; ///< before it goes to paper; may be empty

    /// Full path of the layout.
    QString layoutPath(const Environment &environment) const;
    /// Why it cannot be put out: no layout, no data.
    std::optional<Message> refusal(const Environment &environment) const;
    /// What is asked before it is shown or printed, all in one box; empty when there is nothing to ask.
    QString question(const Environment &environment, PrintWay way) const;
};
