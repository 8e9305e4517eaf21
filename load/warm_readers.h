// Readers that need not be started anew for each document of many.
#pragma once

#include <string>
#include <vector>

namespace zorvane {

/// While it lives, readers of documents that are started on its thread are copies of a process that
/// has loaded its libraries and reads nothing itself. Each copy reads one document and ends, closed
/// in as any other; they share the places in memory that the system chose for the first. One a
/// thread, and it ends on its thread: the system ends a child with the thread that started it.
class WarmReaders {
  public:
    /// False in a build under sanitizers: each reader is started there.
    static bool MakesCopies();
    WarmReaders();
    ~WarmReaders();
    WarmReaders(const WarmReaders&) = delete;
    WarmReaders& operator=(const WarmReaders&) = delete;

    /// The process number of a copy for that call, with `socket` as its standard input; it is a
    /// child of this process. -1: start it in the usual way.
    static int Copy(const std::string& program, const std::vector<std::string>& arguments,
                    const std::vector<std::string>& environment, int socket);

  private:
    bool Begin(const std::string& program, const std::string& mode);
    int Ask(int socket) const;
    void End();

    std::string what_;  ///< the program and its mode
    bool failed_ = false;
    int process_ = -1;
    int socket_ = -1;
};

}  // namespace zorvane
