// The console that a program was started from.
#pragma once

#include <memory>

namespace orvex::platform::consola {

// For as long as it lives, what std::cout and std::cerr are given in UTF-8 comes out in the console's own
// letters, whatever its code page. What goes to a file or to another program stays as it is.
class Consola {
  public:
    Consola();
    ~Consola();
    Consola(const Consola&) = delete;
    Consola& operator=(const Consola&) = delete;

  private:
    class Saida;
    std::unique_ptr<Saida> normal_, erros_;
};

} // namespace orvex::platform::consola
