// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
//
// Stands between a program and a PostgreSQL server, and fails as networks do:
//
//   pim_cut_proxy [--lose-answer-of TEXT [--times N]] SERVER_SOCKET LISTEN_SOCKET|--tcp
//
// It prints where it listens, which with --tcp is a port of 127.0.0.1. From SIGUSR1 on nothing goes
// through any more, while all connections stay open; new ones get no answer, until SIGUSR2. With
// TCP not even the kernel answers then, so that the client's timeouts run. Once a client sends
// TEXT, in a statement that ends a transaction, the server gets it and answers, but the client's
// connection ends instead. SIGTERM ends the proxy, as does the end of the process that began it.
#include <fcntl.h>
#include <linux/filter.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <list>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

namespace pim {
namespace {

volatile std::sig_atomic_t g_cut = 0;
volatile std::sig_atomic_t g_ended = 0;

void OnSignal(int number) {
  if (number == SIGTERM) {
    g_ended = 1;
  } else {
    g_cut = number == SIGUSR1;
  }
}

[[noreturn]] void Fail(const char* what) {
  throw std::system_error(errno, std::system_category(), what);
}

// An open socket, which doesn't block.
class Socket {
 public:
  explicit Socket(int descriptor) : descriptor_(descriptor) {
    if (descriptor_ >= 0) fcntl(descriptor_, F_SETFL, O_NONBLOCK);
  }
  Socket(Socket&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
  Socket(const Socket&) = delete;
  Socket& operator=(const Socket&) = delete;
  Socket& operator=(Socket&&) = delete;
  ~Socket() {
    if (descriptor_ >= 0) close(descriptor_);
  }

  int get() const { return descriptor_; }

  // Appends what is there. False at the end of the connection.
  bool Read(std::string& bytes) const {
    char buffer[16384];
    const ssize_t count = recv(descriptor_, buffer, sizeof buffer, 0);
    if (count > 0) bytes.append(buffer, static_cast<std::size_t>(count));
    return count > 0 || (count < 0 && (errno == EAGAIN || errno == EINTR));
  }

  // Takes from `bytes` what could be written. False when nobody reads it any more.
  bool Write(std::string& bytes) const {
    const ssize_t count = send(descriptor_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (count > 0) bytes.erase(0, static_cast<std::size_t>(count));
    return count >= 0 || errno == EAGAIN || errno == EINTR;
  }

  // Whether the kernel drops each packet that comes for this TCP socket.
  void DropPackets(bool drop) const {
    sock_filter nothing{BPF_RET | BPF_K, 0, 0, 0};
    const sock_fprog program{1, &nothing};
    if (setsockopt(descriptor_, SOL_SOCKET, drop ? SO_ATTACH_FILTER : SO_DETACH_FILTER, &program,
                   sizeof program) != 0 &&
        drop) {
      Fail("SO_ATTACH_FILTER");
    }
  }

 private:
  int descriptor_;
};

sockaddr_un UnixAddress(const std::string& path) {
  sockaddr_un address{};
  if (path.size() >= sizeof address.sun_path) throw std::runtime_error(path + " is too long");
  address.sun_family = AF_UNIX;
  path.copy(address.sun_path, path.size());
  return address;
}

// A socket that isn't connected if the server can't be reached.
Socket Connect(const std::string& path) {
  const sockaddr_un address = UnixAddress(path);
  const int descriptor = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  if (connect(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0)
    return Socket(descriptor);
  close(descriptor);
  return Socket(-1);
}

Socket Listen(int family, const sockaddr* address, socklen_t size) {
  Socket listener(socket(family, SOCK_STREAM | SOCK_CLOEXEC, 0));
  if (bind(listener.get(), address, size) != 0) Fail("bind");
  if (listen(listener.get(), SOMAXCONN) != 0) Fail("listen");
  return listener;
}

Socket ListenAt(const std::string& path) {
  const sockaddr_un address = UnixAddress(path);
  Socket listener = Listen(AF_UNIX, reinterpret_cast<const sockaddr*>(&address), sizeof address);
  std::printf("%s\n", path.c_str());
  return listener;
}

Socket ListenAtAnyPort() {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof address;
  Socket listener = Listen(AF_INET, reinterpret_cast<const sockaddr*>(&address), size);
  if (getsockname(listener.get(), reinterpret_cast<sockaddr*>(&address), &size) != 0)
    Fail("getsockname");
  std::printf("%d\n", ntohs(address.sin_port));
  return listener;
}

// The text whose answers are lost, and how many of them still are.
struct Loss {
  std::string text;
  long times = 0;

  // Whether the text ends in these bytes. `tail` is what came before them, as far as it may begin
  // the text.
  bool IsIn(std::string& tail, std::string_view bytes) const {
    if (times == 0) return false;
    tail += bytes;
    const bool found = tail.find(text) != std::string::npos;
    tail.erase(0, found ? tail.size() : tail.size() - std::min(tail.size(), text.size() - 1));
    return found;
  }
};

class Connection {
 public:
  Connection(Socket client, Socket server)
      : client_(std::move(client)), server_(std::move(server)), ends_(server_.get() < 0) {}

  // Nothing is read or written any more, and nothing closed.
  void Cut(bool tcp) {
    is_cut_ = true;
    if (tcp) client_.DropPackets(true);
  }

  bool HasEnded() const { return !is_cut_ && ends_ && to_client_.empty() && to_server_.empty(); }

  // The two entries of a poll: what each end is waited for.
  void Watch(std::vector<pollfd>& polled) const {
    polled.push_back(Watched(client_, to_server_, to_client_));
    polled.push_back(Watched(server_, to_client_, to_server_));
  }

  // What the poll found.
  void Forward(const pollfd& client, const pollfd& server, Loss& loss) {
    if (is_cut_) return;
    constexpr int kReadable = POLLIN | POLLHUP | POLLERR;
    if (!ends_ && client.revents & kReadable) TakeFromClient(loss);
    if (!ends_ && server.revents & kReadable) TakeFromServer(loss);
    Write(server_, to_server_);
    Write(client_, to_client_);
  }

 private:
  static constexpr std::size_t kMostWaiting = 1 << 20;

  pollfd Watched(const Socket& socket, const std::string& taken, const std::string& due) const {
    int events = due.empty() ? 0 : POLLOUT;
    if (!ends_ && taken.size() < kMostWaiting) events |= POLLIN;
    return {is_cut_ ? -1 : socket.get(), static_cast<short>(events), 0};
  }

  void Write(const Socket& socket, std::string& bytes) {
    if (bytes.empty() || socket.Write(bytes)) return;
    bytes.clear();
    ends_ = true;
  }

  void TakeFromClient(const Loss& loss) {
    std::string bytes;
    ends_ = !client_.Read(bytes);
    to_server_ += bytes;
    loses_answer_ = loses_answer_ || loss.IsIn(client_tail_, bytes);
  }

  void TakeFromServer(Loss& loss) {
    if (!loses_answer_) {
      ends_ = !server_.Read(to_client_);
      return;
    }
    ends_ = !server_.Read(answer_);
    // What a server ends an answer with that leaves no transaction open.
    constexpr std::string_view kReady("Z\0\0\0\5I", 6);
    if (!answer_.ends_with(kReady) || loss.times == 0) return;
    --loss.times;
    std::printf("lost\n");
    ends_ = true;
    to_client_.clear();
  }

  Socket client_;
  Socket server_;
  std::string to_server_;  // read and not written yet
  std::string to_client_;
  std::string client_tail_;
  std::string answer_;  // that the client doesn't get
  bool loses_answer_ = false;
  bool is_cut_ = false;
  bool ends_;  // once all is written
};

class Proxy {
 public:
  Proxy(Socket listener, std::string server, bool tcp, Loss loss)
      : listener_(std::move(listener)),
        server_(std::move(server)),
        loss_(std::move(loss)),
        tcp_(tcp) {}

  // Forwards until a signal or the end of the parent ends it.
  void Run() {
    constexpr int kLookAtSignals = 100;  // milliseconds, where one comes ahead of the wait
    const pid_t parent = getppid();
    while (g_ended == 0 && getppid() == parent) {
      std::vector<pollfd> polled{{listener_.get(), POLLIN, 0}};
      for (const Connection& connection : connections_) connection.Watch(polled);
      const int found = poll(polled.data(), polled.size(), kLookAtSignals);
      if (found < 0 && errno != EINTR) Fail("poll");
      FollowSignals();
      if (found > 0) Serve(polled);
    }
  }

 private:
  void FollowSignals() {
    if (std::exchange(is_cut_, g_cut != 0) == is_cut_) return;
    if (tcp_) listener_.DropPackets(is_cut_);
    if (!is_cut_) return;
    for (Connection& connection : connections_) connection.Cut(tcp_);
  }

  void Serve(const std::vector<pollfd>& polled) {
    std::size_t at = 1;
    for (Connection& connection : connections_) {
      connection.Forward(polled[at], polled[at + 1], loss_);
      at += 2;
    }
    connections_.remove_if([](const Connection& connection) { return connection.HasEnded(); });
    if (polled[0].revents == 0) return;
    Socket client(accept4(listener_.get(), nullptr, nullptr, SOCK_CLOEXEC));
    if (client.get() < 0) return;
    connections_.emplace_back(std::move(client), is_cut_ ? Socket(-1) : Connect(server_));
    if (is_cut_) connections_.back().Cut(tcp_);
  }

  Socket listener_;
  std::string server_;
  Loss loss_;
  std::list<Connection> connections_;
  bool tcp_;
  bool is_cut_ = false;
};

int Main(const std::vector<std::string>& arguments) {
  Loss loss;
  std::vector<std::string> places;
  for (auto argument = arguments.begin(); argument != arguments.end(); ++argument) {
    const bool hasValue = argument + 1 != arguments.end();
    if (*argument == "--lose-answer-of" && hasValue) {
      loss.text = *++argument;
      loss.times = 1;
    } else if (*argument == "--times" && hasValue) {
      loss.times = std::stol(*++argument);
    } else {
      places.push_back(*argument);
    }
  }
  if (places.size() != 2 || (loss.times != 0 && loss.text.empty())) {
    std::fprintf(stderr, "wrong usage: the head of CutProxy.cpp tells the right one\n");
    return 2;
  }
  std::setvbuf(stdout, nullptr, _IOLBF, 0);
  struct sigaction action {};
  action.sa_handler = OnSignal;
  for (const int number : {SIGTERM, SIGUSR1, SIGUSR2}) sigaction(number, &action, nullptr);
  const bool tcp = places[1] == "--tcp";
  Proxy(tcp ? ListenAtAnyPort() : ListenAt(places[1]), places[0], tcp, loss).Run();
  if (!tcp) unlink(places[1].c_str());
  return 0;
}

}  // namespace
}  // namespace pim

int main(int argc, char** argv) {
  try {
    return pim::Main({argv + 1, argv + argc});
  } catch (const std::exception& error) {
    std::fprintf(stderr, "pim_cut_proxy: %s\n", error.what());
    return 1;
  }
}
