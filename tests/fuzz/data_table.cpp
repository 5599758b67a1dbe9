#include "viewer/data/data_table.h"

#include <cstdlib>

/// The first byte chooses how the file separates its fields.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (size == 0)
        return 0;
    constexpr char16_t separators[] = {u',', u'\t', u'|', u' '};
    DataFormat format;
    format.separator = separators[data[0] & 3];
    format.quote = data[0] & 4 ? u'\'' : data[0] & 8 ? QChar() : u'"';
    format.header = !(data[0] & 16);
    const QByteArray bytes(reinterpret_cast<const char *>(data + 1), qsizetype(size) - 1);
    Problem problem;
    const auto table = DataTable::fromBytes(bytes, QStringLiteral("a.csv"), format, &problem);
    if (!table) {
        if (problem.text.isEmpty())
            std::abort();
        return 0;
    }
    for (int row = 0; row < table->rowCount(); ++row) {
        const DataRecord record = table->record(row);
        for (int column = 0; column < int(table->columns().size()); ++column)
            // Only undamaged text is taken in.
            if (record.value(column).contains(QChar::ReplacementCharacter))
                std::abort();
    }
    return 0;
}
