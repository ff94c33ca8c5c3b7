#pragma once

#include <QByteArray>
#include <QString>

#include <grp.h>
#include <sys/wait.h>
#include <unistd.h>

/// To be called by a child process before _exit(): where coverage is counted, it writes what the child has counted,
/// unless the child has given up its user or its limits for good.
void Hand_Over_Counts();

/// Runs `act` in a child process and returns the text that it returns; "child process failed" if it did not get that
/// far. Limits and identities that the act sets end with the child.
template <typename TAct>
QString In_Child(TAct act)
{
    int ends[2] = {-1, -1};
    if (pipe(ends) != 0) {
        return "child process failed";
    }
    const pid_t child = fork();
    if (child == 0) {
        const QByteArray text = act().toUtf8();
        const bool written = write(ends[1], text.constData(), static_cast<size_t>(text.size())) == text.size();
        Hand_Over_Counts();
        _exit(written ? 0 : 1);
    }
    close(ends[1]);
    QByteArray text(65536, '\0');
    const ssize_t size = read(ends[0], text.data(), static_cast<size_t>(text.size()));
    close(ends[0]);

    int status = -1;
    const bool succeeded = child > 0 && waitpid(child, &status, 0) == child && status == 0 && size >= 0;
    return succeeded ? QString::fromUtf8(text.left(static_cast<int>(size))) : QString("child process failed");
}

/// The same as a user whom file permissions bind: "nobody" where the tests run as root.
template <typename TAct>
QString As_Plain_User(TAct act)
{
    constexpr unsigned NOBODY = 65534;

    return In_Child([&]() -> QString {
        const bool is_root = geteuid() == 0;
        if (is_root && (setgroups(0, nullptr) != 0 || setgid(NOBODY) != 0 || setresuid(NOBODY, NOBODY, 0) != 0)) {
            return "cannot become a plain user";
        }
        return act();
    });
}
