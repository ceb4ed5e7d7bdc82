#include "componente.h"

namespace orvex::diagnostico {
namespace {

// In the order in which the system looks.
struct Servidor {
    const VistaDoRegisto* vista = nullptr;
    std::string como;
};

Servidor servidor_de(const ClasseRegistada& registada) {
    const auto& [propria, outra] = registada.vistas;
    if (!propria.biblioteca.empty())
        return {&propria, "«" + propria.biblioteca + "», carregado pelo próprio programa"};
    for (const VistaDoRegisto* vista : {&propria, &outra})
        if (!vista->executavel.empty())
            return {vista, "«" + vista->executavel + "», um programa à parte, de " + de_bits(vista->bits)};
    if (!outra.biblioteca.empty() && outra.substituto)
        return {&outra, "«" + outra.biblioteca + "», num processo substituto de " + de_bits(outra.bits)};
    return {};
}

} // namespace

Resultado verifica_componente(const std::string& componente,
                              const std::optional<ClasseRegistada>& registada) {
    constexpr const char* nome = "componente do ERP";
    if (componente.empty())
        return {
            nome, Estado::erro,
            "falta Componente em [ERP]: o nome da classe que liga ao ERP, como foi registada nesta máquina."};
    if (!registada)
        return {
            nome, Estado::erro,
            "«" + componente +
                "» não está registado nesta máquina. Instale o componente, ou corrija Componente em [ERP]."};
    const std::string qual = componente + " " + registada->classe + ": ";
    const Servidor servidor = servidor_de(*registada);
    const VistaDoRegisto& outra = registada->vistas[1];
    if (servidor.vista == nullptr && !outra.biblioteca.empty())
        return {nome, Estado::erro,
                qual + "«" + outra.biblioteca + "» só está registado para programas de " +
                    de_bits(outra.bits) + ", e este é de " + de_bits(bits_do_programa) +
                    (outra.bits == 32
                         ? ". Escreva Bits=32 em [ERP], para que chegue a ele o programa de 32 bits"
                         : ". Use o programa de 64 bits") +
                    ", ou registe um processo substituto (DllSurrogate) para ele."};
    if (servidor.vista == nullptr)
        return {nome, Estado::erro,
                qual + "a classe não tem nenhum servidor registado. Volte a instalar o componente."};
    if (!servidor.vista->em_falta.empty())
        return {nome, Estado::erro,
                qual + "«" + servidor.vista->em_falta + "» não existe. Volte a instalar o componente."};
    return {nome, Estado::ok, qual + servidor.como};
}

} // namespace orvex::diagnostico
