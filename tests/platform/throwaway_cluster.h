#pragma once

// A PostgreSQL cluster of one test's own, in a temporary folder, that the
// test may stop and start again without disturbing the other tests, which
// share the server of the test command. Made as the test command makes its
// own: initdb, user "postgres" without password, 127.0.0.1 on a free port;
// as root the cluster belongs to the user "postgres".

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>

namespace testdb {

class ThrowawayCluster {
public:
    ThrowawayCluster() : folder_(QStringLiteral("/tmp/staff-own-pg.XXXXXX")) {
        bin_ = serverPrograms();
        if (bin_.isEmpty()) {
            error_ = QStringLiteral("no PostgreSQL server programs (STAFF_TEST_PGBIN or /usr/lib/postgresql/*/bin)");
            return;
        }
        if (!folder_.isValid()) {
            error_ = QStringLiteral("cannot make a temporary folder");
            return;
        }
        if (::geteuid() == 0) {
            // initdb refuses to run as root: the cluster belongs to "postgres".
            if (!run({QStringLiteral("chown"), QStringLiteral("postgres:"), folder_.path()})) {
                error_ = QStringLiteral("cannot give the folder to the user postgres: ") + output_;
                return;
            }
        }
        if (!runAsOwner({bin_ + QStringLiteral("/initdb"), QStringLiteral("-D"), data(), QStringLiteral("-A"),
                         QStringLiteral("trust"), QStringLiteral("-U"), QStringLiteral("postgres"),
                         QStringLiteral("-E"), QStringLiteral("UTF8"), QStringLiteral("--locale=C")})) {
            error_ = QStringLiteral("initdb failed: ") + output_;
            return;
        }
        port_ = freePort();
        if (!start())
            error_ = QStringLiteral("the server did not start: ") + output_;
    }
    ~ThrowawayCluster() {
        if (QFile::exists(data() + QStringLiteral("/postmaster.pid")))
            stop(QStringLiteral("immediate"));
    }
    ThrowawayCluster(const ThrowawayCluster&) = delete;
    ThrowawayCluster& operator=(const ThrowawayCluster&) = delete;

    bool ok() const { return error_.isEmpty(); }
    const QString& error() const { return error_; }
    int port() const { return port_; }
    QString dataSource() const { return QStringLiteral("127.0.0.1:") + QString::number(port_); }
    QString connectionText(const QString& database = QStringLiteral("postgres")) const {
        return QStringLiteral("Provider=PostgreSQL;User ID=postgres;Password=;Data Source=") + dataSource() +
               QStringLiteral(";Initial Catalog=") + database + QStringLiteral(";");
    }

    // Starts the server on its port and waits until it takes connections.
    bool start() {
        return runAsOwner(
            {bin_ + QStringLiteral("/pg_ctl"), QStringLiteral("start"), QStringLiteral("-D"), data(),
             QStringLiteral("-l"), folder_.path() + QStringLiteral("/server.log"), QStringLiteral("-w"),
             QStringLiteral("-t"), QStringLiteral("60"), QStringLiteral("-o"),
             QStringLiteral("-c listen_addresses=127.0.0.1 -p %1 -k %2 -c fsync=off").arg(port_).arg(folder_.path())});
    }
    // Stops the server: "fast" ends the sessions with a word to each client,
    // "immediate" drops them without one.
    bool stop(const QString& mode = QStringLiteral("fast")) {
        return runAsOwner({bin_ + QStringLiteral("/pg_ctl"), QStringLiteral("stop"), QStringLiteral("-D"), data(),
                           QStringLiteral("-m"), mode, QStringLiteral("-w"), QStringLiteral("-t"),
                           QStringLiteral("60")});
    }

private:
    QString data() const { return folder_.path() + QStringLiteral("/data"); }

    static QString serverPrograms() {
        const QString given = qEnvironmentVariable("STAFF_TEST_PGBIN");
        if (!given.isEmpty() && QFile::exists(given + QStringLiteral("/pg_ctl")))
            return given;
        QStringList versions = QDir(QStringLiteral("/usr/lib/postgresql")).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
        std::sort(versions.begin(), versions.end(),
                  [](const QString& a, const QString& b) { return a.toInt() > b.toInt(); });
        for (const QString& v : versions) {
            const QString bin = QStringLiteral("/usr/lib/postgresql/") + v + QStringLiteral("/bin");
            if (QFile::exists(bin + QStringLiteral("/initdb")) && QFile::exists(bin + QStringLiteral("/pg_ctl")))
                return bin;
        }
        return QString();
    }

    // A port that nothing listens on now: the system's choice for a socket bound to port 0.
    static int freePort() {
        const int s = ::socket(AF_INET, SOCK_STREAM, 0);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        address.sin_port = 0;
        socklen_t length = sizeof address;
        int port = 0;
        if (s >= 0 && ::bind(s, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0 &&
            ::getsockname(s, reinterpret_cast<sockaddr*>(&address), &length) == 0)
            port = ntohs(address.sin_port);
        if (s >= 0)
            ::close(s);
        return port;
    }

    bool runAsOwner(QStringList command) {
        if (::geteuid() == 0)
            command = QStringList{QStringLiteral("runuser"), QStringLiteral("-u"), QStringLiteral("postgres"),
                                  QStringLiteral("--")} +
                      command;
        return run(command);
    }
    bool run(const QStringList& command) {
        QProcess p;
        // The caller's working folder may be closed to the owner of the cluster.
        p.setWorkingDirectory(folder_.path());
        p.setProcessChannelMode(QProcess::MergedChannels);
        p.start(command.first(), command.mid(1));
        const bool done = p.waitForFinished(120000);
        output_ = QString::fromLocal8Bit(p.readAll()).trimmed();
        return done && p.exitStatus() == QProcess::NormalExit && p.exitCode() == 0;
    }

    QTemporaryDir folder_;
    QString bin_;
    int port_ = 0;
    QString error_;
    QString output_;
};

} // namespace testdb
