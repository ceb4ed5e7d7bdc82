// An enquiry asked in the background, and its answer told to a window piece by piece: the window stays free,
// and gives it up at any moment.
#pragma once

#include "livro/consultas/consultas.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace orvex::platform::qt::consulta {

using Consulta = std::function<bool(const livro::consultas::Meios&, livro::consultas::Destino&)>;

// Where answers come from: the company's database, opened to be read.
class Fonte {
  public:
    virtual ~Fonte() = default;
    // Answers on the thread that calls, several of them at once, each from a session that no other uses.
    // Where what was told by then must be forgotten, since it is told again, `recomeca` is called. Throws
    // what the session throws.
    virtual bool responde(const Consulta& consulta, livro::consultas::Destino& destino,
                          const std::function<void()>& recomeca) = 0;
};

struct Fim {
    enum class Como { respondeu, nao_ha, desistiu, falhou };
    Como como = Como::respondeu;
    std::string falha{}; // for the user
};

// Who is told, always on the thread of the windows, and never from within `pergunta`.
class Ouvinte {
  public:
    virtual ~Ouvinte() = default;
    // Right before what is told first, so that what was on the screen stays until then, and for good where
    // that is given up; and where what was told must be forgotten.
    virtual void comeca() = 0;
    virtual void vista(const livro::consultas::Vista& esta) = 0;
    virtual void quadro(const livro::consultas::Quadro& este) = 0;
    virtual void linhas(std::vector<livro::consultas::Linha> estas) = 0; // of the quadro told last
    virtual void total(const livro::consultas::Linha& este) = 0;
    virtual void acaba(const Fim& fim) = 0; // nothing is told after it
};

// One enquiry at a time.
class Pergunta {
  public:
    // `ouvinte` must outlive it. Destroyed, it tells no more; what the database still works on ends by
    // itself.
    Pergunta(std::shared_ptr<Fonte> fonte, Ouvinte& ouvinte);
    ~Pergunta();

    // The one that was being answered is given up, without a word.
    void pergunta(Consulta consulta);
    // The listener is told at once; what it has by then stays.
    void desiste();
    bool a_meio() const;

  private:
    struct Estado;
    std::shared_ptr<Fonte> fonte_;
    Ouvinte& ouvinte_;
    std::shared_ptr<Estado> actual_;
};

} // namespace orvex::platform::qt::consulta
