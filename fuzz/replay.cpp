// Stands in for libFuzzer where the programs are built without it: runs every file of the folders that are named.

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QStringList>

#include <cstddef>
#include <cstdint>
#include <cstdio>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

bool Run(const QString& name)
{
    QFile file(name);

    std::printf("%s\n", qUtf8Printable(name));
    std::fflush(stdout);
    if (!file.open(QIODevice::ReadOnly)) {
        return false;
    }
    const QByteArray bytes = file.readAll();
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.constData()),
                           static_cast<std::size_t>(bytes.size()));
    return true;
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    int count = 0;

    for (const QString& folder : QCoreApplication::arguments().mid(1)) {
        for (const QFileInfo& file : QDir(folder).entryInfoList(QDir::Files)) {
            if (!Run(file.filePath())) {
                return 1;
            }
            ++count;
        }
    }
    return count > 0 ? 0 : 1;
}
