// SPDX-License-Identifier: MIT
#include "desktop/CupsSpooler.h"

#include <QLibrary>

#include <memory>

namespace ostrel {

namespace {

// Constants and types copied from the library's headers: the library is loaded at run time, as Qt's printing does it.
constexpr int interfaceVersion = 2;
constexpr int goOn = 100;         // HTTP_STATUS_CONTINUE
constexpr int firstError = 0x100; // IPP status codes below it are successes
constexpr int notFound = 0x406;
constexpr int anyFamily = 0;
constexpr int blocking = 1;
constexpr int lastDocument = 1;
constexpr char pdfFormat[] = "application/pdf";

constexpr double longestWait = 10; // seconds for each answer, during which no data is received

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
        operator Signature *() const { // to the type of the pointer that stores it
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

/// Without this the library would ask for a password on the program's terminal and block the program.
const char *noPassword(const char *, Http *, const char *, const char *, void *) { return nullptr; }

/// A job name that the spooler accepts: UTF-8, one line, not empty, at most 255 bytes.
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
    for (const auto &[name, value] : job.options) // the library only reads them
        options.push_back({const_cast<char *>(name.constData()), const_cast<char *>(value.constData())});
    return options;
}

/// Asked before a job is begun: the calls for a job open their own connections, with longer timeouts.
bool answers(const Cups &cups, Http *spooler) {
    return cups.defaultPrinter(spooler) != nullptr || cups.lastError() < firstError || cups.lastError() == notFound;
}

bool handOver(const Cups &cups, Http *to, const PrintJob &job) {
    const QByteArray queue = job.printer.section(QLatin1Char('/'), 0, 0).toUtf8(); // without the printer's instance
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
