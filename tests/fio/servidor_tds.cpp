#include "tests/fio/servidor_tds.h"

#include "tests/fio/execucao.h"
#include "tests/fio/soquetes.h"

#include <stdexcept>

namespace orvex::testes {

using namespace tds;
using Efeito = Avaria::Efeito;

struct ServidorTDS::Ligacao {
    explicit Ligacao(Soquete descritor) : canal(descritor) {}

    using Conta = std::function<Avaria()>; // of the next statement of a request of several
    void pedido(const Pedido& pedido, const Avaria& avaria, const Conta& conta);
    Execucao::Segue instrucao(const Avaria& avaria);

    Canal canal;
    Respostas respostas{canal};
    std::optional<Execucao> execucao; // once the client has logged in
    std::thread linha;
};

ServidorTDS::ServidorTDS(std::filesystem::path pasta_empresa, const char* morada, int porta)
    : pasta_(std::move(pasta_empresa)), escuta_((inicia_soquetes(), abre_soquete())) {
    sockaddr_in propria{};
    propria.sin_family = AF_INET;
    propria.sin_addr.s_addr = inet_addr(morada);
    propria.sin_port = htons(static_cast<std::uint16_t>(porta));
    socklen_t tamanho = sizeof propria;
    auto* generica = reinterpret_cast<sockaddr*>(&propria);
    const int ja_usada = 1; // by a server that has just gone
    setsockopt(escuta_, SOL_SOCKET, SO_REUSEADDR, reinterpret_cast<const char*>(&ja_usada), sizeof ja_usada);
    if (!valido(escuta_) || bind(escuta_, generica, tamanho) != 0 || listen(escuta_, SOMAXCONN) != 0 ||
        getsockname(escuta_, generica, &tamanho) != 0)
        throw std::runtime_error("the test server cannot listen");
    porta_ = ntohs(propria.sin_port);
    aceitador_ = std::thread([this] { aceita(); });
}

ServidorTDS::~ServidorTDS() {
    acaba_escuta(escuta_, aceitador_);
    for (const auto& ligacao : ligacoes_) {
        ligacao->canal.corta();
        ligacao->linha.join();
    }
}

void ServidorTDS::aceita() {
    for (Soquete descritor; valido(descritor = aceita_em(escuta_));) {
        const std::lock_guard guarda(tranca_);
        Ligacao& ligacao = *ligacoes_.emplace_back(std::make_unique<Ligacao>(descritor));
        ligacao.linha = std::thread([this, &ligacao] {
            try {
                for (;;)
                    serve(ligacao);
            } catch (const LigacaoPerdida&) {
            } catch (const std::exception&) { // a request without what its kind must have
            }
            ligacao.execucao.reset(); // which rolls its transaction back, before the client is told
            ligacao.canal.corta();
        });
    }
}

void ServidorTDS::avaria_no(int pedido, Avaria avaria) { arma(pedido, 0, std::move(avaria)); }

void ServidorTDS::avaria_na_instrucao(int instrucao, Avaria avaria) { arma(0, instrucao, std::move(avaria)); }

void ServidorTDS::arma(int pedido, int instrucao, Avaria avaria) {
    const std::lock_guard guarda(tranca_);
    pedidos_ = instrucoes_ = 0;
    pedido_da_avaria_ = pedido;
    instrucao_da_avaria_ = instrucao;
    avaria_ = std::move(avaria);
}

Avaria ServidorTDS::regista_instrucao() {
    const std::lock_guard guarda(tranca_);
    return ++instrucoes_ == instrucao_da_avaria_ ? avaria_ : Avaria{};
}

Avaria ServidorTDS::regista(const std::string& texto) {
    const std::lock_guard guarda(tranca_);
    textos_.push_back(texto);
    return ++pedidos_ == pedido_da_avaria_ ? avaria_ : Avaria{};
}

void ServidorTDS::serve(Ligacao& ligacao) {
    const Mensagem mensagem = ligacao.canal.le();
    switch (mensagem.tipo) {
    case saudacao:
        // The version and that there is no encryption: where each is, how long, and the two.
        return ligacao.canal.envia({"\0\0\x0B\0\x06\1\0\x11\0\1\xFF\x0F\0\0\0\0\0\2", 18}, true);
    case entrada:
        return cala_se ? void() : entra(ligacao, le_entrada(mensagem.bytes));
    case atencao:
        ligacao.respostas.interrompida(); // all had been answered: the client had seen enough
        break;
    default:
        if (!ligacao.execucao) throw LigacaoPerdida();
        const Pedido pedido = le_pedido(mensagem);
        ligacao.pedido(pedido, regista(pedido.registado()), [this] { return regista_instrucao(); });
    }
    ligacao.canal.espera(atraso_ms);
    ligacao.respostas.envia();
}

void ServidorTDS::entra(Ligacao& ligacao, const Entrada& entrada) {
    if (entrada.programa != "ORVEX") throw LigacaoPerdida(); // what the server's own lists know it by
    Respostas& respostas = ligacao.respostas;
    const bool primeira = entrada.base == base || entrada.base == "master";
    const std::filesystem::path pasta = primeira ? pasta_ : pasta_ / entrada.base;
    if (entrada.utilizador != utilizador || entrada.palavra_passe != palavra_passe) {
        respostas.falhou(18456, "Login failed for user '" + entrada.utilizador + "'.");
    } else if (!std::filesystem::is_directory(pasta)) {
        respostas.falhou(4060, "Cannot open database \"" + entrada.base + "\" requested by the login.");
        respostas.falhou(18456, "Login failed for user '" + entrada.utilizador + "'.");
    } else {
        ligacao.execucao.emplace(pasta, respostas);
        respostas.entrada_aceite();
    }
    ligacao.canal.espera(atraso_ms);
    respostas.envia();
    if (!ligacao.execucao) throw LigacaoPerdida();
}

Execucao::Segue ServidorTDS::Ligacao::instrucao(const Avaria& avaria) {
    if (avaria.efeito == Efeito::corta) throw LigacaoPerdida();
    if (avaria.efeito == Efeito::vitima) execucao->vitima(avaria.texto);
    const bool recusada = avaria.efeito == Efeito::erro || avaria.efeito == Efeito::aviso;
    if (recusada) execucao->recusa(avaria.numero, avaria.texto, avaria.efeito == Efeito::aviso);
    return avaria.efeito == Efeito::vitima ? Execucao::Segue::acaba
           : recusada                      ? Execucao::Segue::salta_esta
                                           : Execucao::Segue::sim;
}

void ServidorTDS::Ligacao::pedido(const Pedido& pedido, const Avaria& avaria, const Conta& conta) {
    const auto antes = [&] { return instrucao(conta()); };
    switch (avaria.efeito) {
    case Efeito::corta:
        throw LigacaoPerdida();
    case Efeito::corta_depois:
        respostas.esquece();
        execucao->executa(pedido, antes);
        throw LigacaoPerdida();
    case Efeito::demora:
        if (canal.desistiu(avaria.milissegundos)) return respostas.interrompida();
        break;
    case Efeito::surdez:
        canal.espera(avaria.milissegundos);
        break;
    case Efeito::erro:
    case Efeito::aviso:
        return respostas.falhou(avaria.numero, avaria.texto);
    case Efeito::tranca:
        return execucao->nega_tranca(avaria.numero);
    case Efeito::vitima:
        return execucao->vitima(avaria.texto);
    case Efeito::morre:
        acaba_processo();
        break;
    case Efeito::morre_depois:
    case Efeito::nenhuma:
        break;
    }
    execucao->executa(pedido, antes);
    if (avaria.efeito == Efeito::morre_depois) acaba_processo();
}

} // namespace orvex::testes
