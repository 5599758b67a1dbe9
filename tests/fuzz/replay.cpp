// Runs a fuzzer's target on every file of the folders named, so that what was once found stays mended.
#include <QDir>
#include <cstdio>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);
extern "C" [[gnu::weak]] int LLVMFuzzerInitialize(int *argc, char ***argv);

int main(int argc, char **argv) {
    if (LLVMFuzzerInitialize)
        LLVMFuzzerInitialize(&argc, &argv);
    int seeds = 0;
    for (int i = 1; i < argc; ++i) {
        const QDir folder(QString::fromLocal8Bit(argv[i]));
        for (const QFileInfo &entry : folder.entryInfoList(QDir::Files)) {
            QFile file(entry.filePath());
            if (!file.open(QIODevice::ReadOnly))
                return 1;
            const QByteArray bytes = file.readAll();
            LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t *>(bytes.constData()),
                                   size_t(bytes.size()));
            ++seeds;
        }
    }
    std::printf("%d seeds\n", seeds);
    return seeds > 0 ? 0 : 1;
}
