#pragma once

#include "print/engine/print_files.h"
#include "print/engine/viewer_job.h"
#include "print/engine/work_folder.h"

#include <QString>
#include <QStringList>
#include <array>
#include <functional>
#include <optional>
#include <span>
#include <vector>

class CommandFile;
class DataFile;
struct Environment;

enum class PrintWay {
    Preview, ///< on the screen
    Print    ///< a single document asks for the printer, a batch goes to the usual one
};

/// Drives the report engine for one document: writes the command file WfdCom.dat into the work folder and
/// starts the engine's program with it. Call iInit, then the setters in any order, then one of the starting
/// operations. Nothing waits for the started program, and no message is shown: every operation gives 0, or
/// −1 with sErrMsg. From the first given name that is written until the program is started, the work folder's
/// lock is held.
class cls_WfdPrintExe {
public:
    /// @param sent takes what is handed over; may be null
    explicit cls_WfdPrintExe(const Environment &environment, HandedDocuments *sent = nullptr);
    ~cls_WfdPrintExe();

    /// @param layout full path of the layout
    /// @param title the viewer's window title; an empty one leaves the title as it is
    short iInit(const QString &layout, const QString &title);
    /// @param slot 1 to 5; another leaves the slots unchanged
    /// @param name under which the layout knows the data
    /// @param file name of a file with a header row in the work folder
    short iSetDataText(short slot, const QString &name, const QString &file);
    /// Writes a data file into the work folder for a slot. It goes once it was read.
    /// @param file its name; empty: as the data are called
    short iWriteData(short slot, const QString &name, const DataFile &data, QString file = {});
    /// Further files that the data name; they go with the viewer.
    PrintFiles &files();
    /// A file that goes once the viewer has read it.
    short addTemporary(const QString &path);
    /// @param path of a file without a header row, passed on unchanged
    short iSetDataTextNoTitle(short slot, const QString &name, const QString &path);
    /// Tenths of a millimetre.
    short iSetOffset(qint32 x, qint32 y);
    /// 2 is actual size, 10 and more are percent.
    short iSetPrintZoom(short zoom);
    /// A value that is the same on every page. @param subsection may be blank
    short iSetItemValue(const QString &section, const QString &subsection, const QString &item,
                        const QString &value);
    /// The layout's section from which it repeats for every record; below 1: none.
    short iSetRepeatStart(short section);

    /// Shows the document. @param paper a PaperCode
    short iPreview(short paper);
    /// Writes the command file of a preview and starts nothing.
    /// @param read takes the file's full path and reads at once what it names; the temporary files then go
    short iPreviewData(const std::function<void(const QString &)> &read = {});
    short iPreviewActX();
    /// Prints without a dialog.
    short iPrintBk();
    short iPrintDialog(short paper);
    /// Shows the document, or prints it with a dialog, on the paper that the layout's name asks for.
    short iPutOut(PrintWay way);

    /// Merges reports into one document and offers the printer dialog for it. Report i takes file i of every
    /// list; fewer entries than reports fail.
    ///@{
    short addPrint(short count, const QString &name, const QStringList &files, const QStringList &layouts,
                   const QString &title);
    /// @param secondUsed 1 where the report has a second data source
    short addPrint_addCSV(short count, const QString &firstName, const QStringList &firstFiles,
                          const QString &secondName, const QStringList &secondFiles,
                          const QStringList &layouts, std::span<const short> secondUsed,
                          const QString &title);
    ///@}

    /// Why the last operation failed, for the user.
    const QString &sErrMsg() const { return m_error; }

private:
    enum class Action { Print, PrintFromDialog, Show };

    struct DataSlot {
        QString name; ///< empty: the slot is not used
        QString path;
        bool headerless = false;
    };
    struct FixedValue {
        QString section, subsection, item, value;
    };

    short setSlot(short slot, DataSlot data);
    void addPlacement(CommandFile &file) const;
    CommandFile documentCommands(Action action, short paper) const;
    QString commandFile() const;
    bool lock();
    short fail(const QString &reason);
    short hand(const CommandFile &commands, EngineProgram program, const QStringList &arguments);
    short show(const CommandFile &commands);
    short showMerged(const CommandFile &reports, const QString &title);

    const Environment &m_environment;
    HandedDocuments *m_sent;
    QString m_workFolder; ///< with its closing separator
    QString m_layout;
    QString m_title;
    std::array<DataSlot, 5> m_slots;
    qint32 m_offsetX = 0;
    qint32 m_offsetY = 0;
    short m_zoom;
    short m_repeatStart = 0;
    std::vector<FixedValue> m_values;
    std::optional<PrintFiles> m_files;
    std::optional<WorkFolderLock> m_lock;
    std::optional<ViewerJob> m_job; ///< while the lock is held
    QString m_error;
};
