// SPDX-License-Identifier: MIT
#include "desktop/CupsSpooler.h"

#include <QLibrary>

#include <memory>

namespace ostrel {

namespace {

// What is used of the library's own headers. It comes with Qt's printing and is found while the program runs, as there.
constexpr int interfaceVersion = 2;
constexpr int goOn = 100;         // HTTP_STATUS_CONTINUE
constexpr int firstError = 0x100; // the codes of IPP below it are good
constexpr int notFound = 0x406;
constexpr int anyFamily = 0;
constexpr int blocking = 1;
constexpr int lastDocument = 1;
constexpr char pdfFormat[] = "application/pdf";

constexpr double longestWait = 10; // seconds for each answer: meanwhile the instrument is not listened to

struct Http;
struct Option {
    char *name;
    char *value;
};
using Timeout = int (*)(Http *, void *);
using Password = const char *(*)(const char *prompt, Http *, const char *method, const char *resource, void *);

class Cups {
    struct Found {
        QFunctionPointer function;
        template <typename Signature>
        operator Signature *() const { // to whatever it is kept as
            return reinterpret_cast<Signature *>(function);
        }
    };
    Found find(const char *name) {
        const QFunctionPointer found = library_.resolve(name);
        complete_ = complete_ && found != nullptr;
        return {found};
    }

    QLibrary library_{QStringLiteral("cups"), interfaceVersion};
    bool complete_ = true;

public:
    bool complete() const { return complete_; }

    // clang-format off
    const char *(*server)()                                                     = find("cupsServer");
    int (*port)()                                                               = find("ippPort");
    int (*encryption)()                                                         = find("cupsEncryption");
    Http *(*connect)(const char *server, int port, void *addresses, int family, int encryption, int blocking,
                     int milliseconds, int *cancel)                             = find("httpConnect2");
    void (*setTimeout)(Http *, double seconds, Timeout, void *)                 = find("httpSetTimeout");
    void (*close)(Http *)                                                       = find("httpClose");
    void (*setPassword)(Password, void *)                                       = find("cupsSetPasswordCB2");
    const char *(*defaultPrinter)(Http *)                                       = find("cupsGetDefault2");
    int (*lastError)()                                                          = find("cupsLastError");
    int (*createJob)(Http *, const char *queue, const char *name, int count, Option *) = find("cupsCreateJob");
    int (*startDocument)(Http *, const char *queue, int job, const char *name, const char *format, int last)
                                                                                = find("cupsStartDocument");
    int (*write)(Http *, const char *data, std::size_t size)                    = find("cupsWriteRequestData");
    int (*finishDocument)(Http *, const char *queue)                            = find("cupsFinishDocument");
    int (*cancelJob)(Http *, const char *queue, int job, int purge)             = find("cupsCancelJob2");
    // clang-format on
};

int noMoreTime(Http *, void *) { return 0; }

/// The library would ask at the terminal that the program was started from, and the program would block.
const char *noPassword(const char *, Http *, const char *, const char *, void *) { return nullptr; }

/// As a spooler takes it: UTF-8, one line, neither empty nor longer than a name of the protocol.
QByteArray jobName(const QString &text) {
    constexpr qsizetype longest = 255;
    QString name;
    for (const QChar character : text)
        name += character.category() == QChar::Other_Control ? QChar(u' ') : character;
    name = name.simplified();
    while (name.toUtf8().size() > longest)
        name.chop(name.back().isLowSurrogate() ? 2 : 1);
    return name.isEmpty() ? QByteArrayLiteral("Report") : name.toUtf8();
}

std::vector<Option> optionsOf(const PrintJob &job) {
    std::vector<Option> options;
    for (const auto &[name, value] : job.options) // which the library only reads
        options.push_back({const_cast<char *>(name.constData()), const_cast<char *>(value.constData())});
    return options;
}

/// The steps of a job open further connections of their own, with a longer patience: they are not begun in vain.
bool answers(const Cups &cups, Http *spooler) {
    return cups.defaultPrinter(spooler) != nullptr || cups.lastError() < firstError || cups.lastError() == notFound;
}

bool handOver(const Cups &cups, Http *to, const PrintJob &job) {
    const QByteArray queue = job.printer.section(QLatin1Char('/'), 0, 0).toUtf8(); // without the user's instance of it
    const QByteArray name = jobName(job.name);
    std::vector<Option> options = optionsOf(job);
    const int id = cups.createJob(to, queue, name, static_cast<int>(options.size()), options.data());
    if (id == 0)
        return false;
    const bool sent = cups.startDocument(to, queue, id, name, pdfFormat, lastDocument) == goOn &&
                      cups.write(to, job.pdf, static_cast<std::size_t>(job.pdf.size())) == goOn;
    const bool taken = cups.finishDocument(to, queue) < firstError && sent;
    if (!taken)
        cups.cancelJob(to, queue, id, 0);
    return taken;
}

} // namespace

bool CupsSpooler::take(const PrintJob &job) {
    static Cups cups;
    if (!cups.complete())
        return false;
    const std::unique_ptr<Http, void (*)(Http *)> spooler(cups.connect(cups.server(), cups.port(), nullptr, anyFamily,
                                                                       cups.encryption(), blocking,
                                                                       static_cast<int>(longestWait * 1000), nullptr),
                                                          cups.close);
    if (!spooler)
        return false;
    cups.setTimeout(spooler.get(), longestWait, noMoreTime, nullptr);
    cups.setPassword(noPassword, nullptr);
    return answers(cups, spooler.get()) && handOver(cups, spooler.get(), job);
}

} // namespace ostrel
