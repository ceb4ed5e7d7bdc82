// An ERP object as automation sees it: a document, its header, its lines, a line, the company.
#pragma once

#include "tools/componente/despacho.h"

namespace orvex::componente {

// What only objects of ours have: the object behind, for when one comes back as an argument.
struct IObjectoERP : IUnknown {
    virtual const startup::ReferenciaERP& real() const = 0;
};

// None of no object. The same object is given out as a new one each time.
Referencia<IDispatch> despacho_de(const startup::ReferenciaERP& real);

// None of Nothing. Throws Falha when it is another component's.
startup::ReferenciaERP objecto_de(const Referencia<IDispatch>& despacho);

} // namespace orvex::componente

__CRT_UUID_DECL(orvex::componente::IObjectoERP, 0x5e0c8f3a, 0x7b1d, 0x4c52, 0x9a, 0x64, 0x2d, 0x81, 0xf0,
                0x37, 0xc9, 0xb6)
