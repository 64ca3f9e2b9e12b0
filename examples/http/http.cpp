// A web server on 127.0.0.1 that answers every request which it has accepted before it ends: / at once, /slow over a
// second. Its own parameter -port=N chooses the port; 0, or none, takes any that is free.

#include <httplib.h>
#include <launcher/service_module.h>
#include <poll.h>
#include <sys/socket.h>

#include <atomic>
#include <charconv>
#include <chrono>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>
#include <thread>

namespace {

std::atomic<bool> stopRequested = false;

void RequestStop() {
  stopRequested = true;
  stopRequested.notify_all();
}

// The launcher passes its own parameters on too, so those of others are skipped. Nothing: not a port.
std::optional<int> GetPort(int argc, char** argv) {
  int port = 0;
  for (int i = 1; i < argc; ++i) {
    const std::string_view prefix = "-port=", argument = argv[i];
    if (argument.substr(0, prefix.size()) != prefix) continue;
    const std::string_view number = argument.substr(prefix.size());
    const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), port);
    if (error != std::errc() || end != number.data() + number.size() || port < 0 || port > 65535) return std::nullopt;
  }
  return port;
}

void AddPages(httplib::Server& server) {
  server.Get(
      "/", [](const httplib::Request&, httplib::Response& response) { response.set_content("hello\n", "text/plain"); });
  server.Get("/slow", [](const httplib::Request&, httplib::Response& response) {
    std::cout << "slow request\n" << std::flush;
    response.set_chunked_content_provider("text/plain", [line = 1](size_t, httplib::DataSink& sink) mutable {
      std::this_thread::sleep_for(std::chrono::milliseconds(100));
      const std::string text = "line " + std::to_string(line) + " of 10\n";
      if (!sink.write(text.data(), text.size())) return false;
      if (line++ == 10) sink.done();
      return true;
    });
  });
}

int Bind(httplib::Server& server, int port) {
  if (port == 0) return server.bind_to_any_port("127.0.0.1");
  return server.bind_to_port("127.0.0.1", port) ? port : -1;
}

// Waits until those who have connected are accepted: a shutdown of the socket resets who is still waiting.
void AwaitAccepted(int listener) {
  pollfd waiting = {listener, POLLIN, 0};
  while (poll(&waiting, 1, 0) > 0 && waiting.revents == POLLIN) {
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
}

}  // namespace

int Bootstrap(int argc, char** argv) {
  const std::optional<int> wanted = GetPort(argc, argv);
  if (!wanted) {
    std::cout << "-port= takes a number up to 65535" << std::endl;
    return 2;
  }
  httplib::Server server;
  AddPages(server);
  // A connection carries one request, so that to answer all that was accepted is to answer all connections.
  server.set_keep_alive_max_count(1);
  int listener = -1;
  server.set_socket_options([&listener](int socket) {
    listener = socket;
    const int on = 1;
    setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
  });
  const int port = Bind(server, *wanted);
  if (port < 0) {
    std::cout << "cannot listen on port " << *wanted << std::endl;
    return 1;
  }
  listen(listener, SOMAXCONN);  // The library's queue of five overflows at the first rush.
  std::cout << "listening on 127.0.0.1:" << port << std::endl;

  int status = 0;
  std::thread acceptor([&server, &status] {
    server.listen_after_bind();
    if (!stopRequested) status = 1;  // It has ended by itself.
    RequestStop();
  });
  stopRequested.wait(false);
  AwaitAccepted(listener);
  // Not Server::stop: that drops the connections which no thread has taken up yet, and cuts off streamed answers. When
  // its socket accepts no more, the server answers all that it has accepted, and returns.
  shutdown(listener, SHUT_RDWR);
  acceptor.join();
  std::cout << "http ends" << std::endl;
  return status;
}

// Does no more than ask, and does not wait: the thread that it interrupts may be one that has to answer requests.
int StopService() {
  RequestStop();
  return 0;
}
