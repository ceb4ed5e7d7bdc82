// While it lives, no file of this program grows beyond so many bytes: as on a disk that is full.
#pragma once

#include <csignal>
#include <sys/resource.h>

namespace orvex::testes {

class SemEspaco {
  public:
    explicit SemEspaco(rlim_t bytes) {
        getrlimit(RLIMIT_FSIZE, &normal_);
        const rlimit pouco{bytes, normal_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &pouco);
    }
    ~SemEspaco() {
        setrlimit(RLIMIT_FSIZE, &normal_);
        std::signal(SIGXFSZ, antes_);
    }
    SemEspaco(SemEspaco&&) = delete;

  private:
    rlimit normal_{};
    void (*antes_)(int) = std::signal(SIGXFSZ, SIG_IGN);
};

} // namespace orvex::testes
