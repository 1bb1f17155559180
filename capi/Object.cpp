#include "capi/Object.h"

#include <cstring>

#include "app/Composition.h"
#include "capi/Components.h"
#include "capi/Structures.h"
#include "capi/Texts.h"
#include "taxid/Validacion.h"

namespace FendaMaestros::capi {

ObjectThing::ObjectThing(DesktopThing& desktop, const fenda_components* components)
    : Thing(kindOfThing),
      desktop_(desktop),
      host_(components ? *components : fenda_components{}),
      component_(desktop.desktop(), components_) {
    registerComponents(components_, desktop.desktop());
    registerHostComponents(components_, host_, *this);
    ++desktop_.objects;
}

ObjectThing::~ObjectThing() {
    setSession(&FendaMaes::MyBd, nullptr, nullptr);
    setSession(&FendaMaes::MyBdorigen, nullptr, nullptr);
    --desktop_.objects;
    if (!host_.release) return;
    try {
        host_.release(host_.context);
    } catch (...) {
        return;  // nobody is left to be told
    }
}

fenda_session* ObjectThing::session(SesionBd* FendaMaes::*property) const {
    return property == &FendaMaes::MyBd ? main_.handle : origin_.handle;
}

void ObjectThing::setSession(SesionBd* FendaMaes::*property, fenda_session* handle, SessionThing* thing) {
    Given& kept = given(property);
    if (thing) ++thing->uses;
    if (kept.thing) --kept.thing->uses;
    kept = {handle, thing};
    component_.*property = thing ? &thing->session() : nullptr;
}

fenda_session* ObjectThing::handleOf(const SesionBd* session) const {
    for (const Given& kept : {main_, origin_})
        if (kept.thing && &kept.thing->session() == session) return kept.handle;
    return nullptr;
}

}  // namespace FendaMaestros::capi

using namespace FendaMaestros;
using namespace FendaMaestros::capi;

namespace {

ObjectThing& found(fenda_object* object) { return Registry::instance().find<ObjectThing>(object); }

/// Reads or writes properties.
template <class Access>
fenda_status access(fenda_object* object, Access&& with) noexcept {
    return guarded([&] { with(found(object)); });
}

/// Calls an operation that asks nobody anything.
template <class Work>
fenda_status compute(fenda_object* object, Work&& work) noexcept {
    return guarded([&] {
        ObjectThing& on = found(object);
        const ObjectThing::Operation operation(on);
        work(on.component());
    });
}

/// Calls an operation that may show something.
template <class Work>
fenda_status operate(fenda_object* object, Work&& work) noexcept {
    return compute(object, [&](FendaMaes& component) {
        DesktopThing& desktop = found(object).desktop();
        desktop.beginOperation();
        work(component);
        desktop.rethrowFailure();
    });
}

fenda_status show(fenda_object* object, void (FendaMaes::*screen)()) noexcept {
    return operate(object, [screen](FendaMaes& component) { (component.*screen)(); });
}

fenda_status setSession(fenda_object* object, SesionBd* FendaMaes::*property, fenda_session* session) noexcept {
    return access(object, [&](ObjectThing& on) {
        if (on.isRunning()) refuse(FENDA_IN_USE, "Una operación del objeto está en curso.");
        on.setSession(property, session, session ? &Registry::instance().find<SessionThing>(session) : nullptr);
    });
}

fenda_status getSession(fenda_object* object, SesionBd* FendaMaes::*property, fenda_session** session) noexcept {
    return access(object, [&](const ObjectThing& on) { required(session) = on.session(property); });
}

}  // namespace

fenda_status fenda_object_new(fenda_desktop* desktop, const fenda_components* components, fenda_object** object) {
    return guardedMaking(object, [&] {
        DesktopThing& on = Registry::instance().find<DesktopThing>(desktop);
        fenda_components host{};
        if (components) host = takenStructure(components);
        // A new object is the one that screens work with, but here that is the one whose operation is under way.
        WorkContext* const current = InstanciaActual;
        auto made = std::make_unique<ObjectThing>(on, components ? &host : nullptr);
        InstanciaActual = current;
        return made;
    });
}

fenda_status fenda_object_close(fenda_object* object) {
    return guarded([&] {
        if (found(object).isRunning()) refuse(FENDA_IN_USE, "Una operación del objeto está en curso.");
        Registry::instance().close(object);
    });
}

// --- properties

fenda_status fenda_get_Cuenta(fenda_object* object, char** Cuenta) {
    return access(object, [&](ObjectThing& on) { giveRequired(Cuenta, on.component().Cuenta); });
}

fenda_status fenda_set_Cuenta(fenda_object* object, const char* Cuenta) {
    return access(object, [&](ObjectThing& on) { on.component().Cuenta = taken(Cuenta); });
}

fenda_status fenda_get_bFactu(fenda_object* object, bool* bFactu) {
    return access(object, [&](ObjectThing& on) { required(bFactu) = on.component().bFactu; });
}

fenda_status fenda_set_bFactu(fenda_object* object, bool bFactu) {
    return access(object, [&](ObjectThing& on) { on.component().bFactu = bFactu; });
}

fenda_status fenda_get_Plan(fenda_object* object, int16_t* Plan) {
    return access(object, [&](ObjectThing& on) { required(Plan) = on.component().Plan; });
}

fenda_status fenda_set_Plan(fenda_object* object, int16_t Plan) {
    return access(object, [&](ObjectThing& on) { on.component().Plan = Plan; });
}

fenda_status fenda_get_MyBdorigen(fenda_object* object, fenda_session** MyBdorigen) {
    return getSession(object, &FendaMaes::MyBdorigen, MyBdorigen);
}

fenda_status fenda_set_MyBdorigen(fenda_object* object, fenda_session* MyBdorigen) {
    return setSession(object, &FendaMaes::MyBdorigen, MyBdorigen);
}

fenda_status fenda_get_MyBd(fenda_object* object, fenda_session** MyBd) {
    return getSession(object, &FendaMaes::MyBd, MyBd);
}

fenda_status fenda_set_MyBd(fenda_object* object, fenda_session* MyBd) {
    return setSession(object, &FendaMaes::MyBd, MyBd);
}

// --- operations

fenda_status fenda_jPaises(fenda_object* object) { return show(object, &FendaMaes::jPaises); }

fenda_status fenda_jConceptos(fenda_object* object) { return show(object, &FendaMaes::jConceptos); }

fenda_status fenda_jDepartamentos(fenda_object* object) { return show(object, &FendaMaes::jDepartamentos); }

fenda_status fenda_jCentros(fenda_object* object) { return show(object, &FendaMaes::jCentros); }

fenda_status fenda_jMasas(fenda_object* object) { return show(object, &FendaMaes::jMasas); }

fenda_status fenda_jPlanCuentas(fenda_object* object, int32_t nIdCuenta) {
    return operate(object, [nIdCuenta](FendaMaes& component) { component.jPlanCuentas(nIdCuenta); });
}

fenda_status fenda_CrearNuevaCuenta(fenda_object* object, char* sCta, size_t size, int32_t nIdNif, bool bCalcula,
                                    char** Cuenta) {
    return operate(object, [&](FendaMaes& component) {
        std::string code(taken(sCta));
        if (bCalcula && size < FENDA_CODE_SIZE) refuseArgument("No hay sitio para el código de la cuenta.");
        const std::string saved = component.CrearNuevaCuenta(code, nIdNif, bCalcula);
        if (code.size() < size) std::memcpy(sCta, code.c_str(), code.size() + 1);
        give(Cuenta, saved);
    });
}

fenda_status fenda_jshowInformePlandeCuentas(fenda_object* object) {
    return show(object, &FendaMaes::jshowInformePlandeCuentas);
}

fenda_status fenda_jshowPGCMantenimiento(fenda_object* object) {
    return show(object, &FendaMaes::jshowPGCMantenimiento);
}

fenda_status fenda_jshowPGCVerificacion(fenda_object* object) { return show(object, &FendaMaes::jshowPGCVerificacion); }

fenda_status fenda_msValidaCuentaPlan(fenda_object* object, const char* sCuenta, int16_t nEjercicio, bool bPreguntar,
                                      bool* valid) {
    return operate(object, [&](FendaMaes& component) {
        bool& verdict = required(valid);
        verdict = component.msValidaCuentaPlan(std::string(taken(sCuenta)), nEjercicio, bPreguntar);
    });
}

fenda_status fenda_fnBuscarCuentas(fenda_object* object, int16_t n, bool bPGC, bool bSoloActivas, int32_t* id) {
    return operate(object, [&](FendaMaes& component) {
        std::int32_t& chosen = required(id);
        chosen = component.fnBuscarCuentas(n, bPGC, bSoloActivas);
    });
}

fenda_status fenda_fnBuscarConceptos(fenda_object* object, int16_t n, int32_t* id) {
    return operate(object, [&](FendaMaes& component) {
        std::int32_t& chosen = required(id);
        chosen = component.fnBuscarConceptos(n);
    });
}

fenda_status fenda_jNif(fenda_object* object, const char* sNif) {
    return operate(object, [sNif](FendaMaes& component) { component.jNif(std::string(takenOrNone(sNif))); });
}

fenda_status fenda_jCargaClavesRetencion(fenda_object* object, const char* s, int16_t n, bool bConsulta,
                                         fenda_text_sink sink, void* context, int32_t* chosen) {
    return compute(object, [&](FendaMaes& component) {
        if (!sink) refuseArgument("Falta a quién decirlo.");
        ComboBox combo;
        component.jCargaClavesRetencion(combo, std::string(taken(s)), n, bConsulta);
        for (int item = 0; item < combo.ListCount(); ++item) callBackWith(sink, context, combo.List(item).c_str());
        if (chosen) *chosen = combo.ListIndex();
    });
}

fenda_status fenda_Calcula_letra_NIF(fenda_object* object, const char* valor, char** letter, char** mensaje) {
    return compute(object, [&](FendaMaes& component) {
        char*& place = required(letter);
        std::string reason;
        const std::string computed = component.Calcula_letra_NIF(std::string(taken(valor)), &reason);
        give(mensaje, reason);
        place = given(computed);
    });
}

fenda_status fenda_FnBuscaPoblacion(fenda_object* object, const char* PAIS, const char* Cpostal, char** town) {
    return compute(object, [&](FendaMaes& component) {
        char*& place = required(town);
        place = given(component.FnBuscaPoblacion(std::string(taken(PAIS)), std::string(taken(Cpostal))));
    });
}

fenda_status fenda_FnVerificarCif(fenda_object* object, char* sValor, bool bDatos, bool* valid) {
    // Hosts check them by the million: without the register, nothing of the object has a say, and the text is checked
    // where it stands.
    if (!bDatos)
        return access(object, [&](ObjectThing&) {
            bool& verdict = required(valid);
            const CifVerificado verified = verificarCif(sValor, taken(sValor).size());
            sValor[verified.size] = '\0';
            verdict = verified.valid;
        });
    return compute(object, [&](FendaMaes& component) {
        bool& verdict = required(valid);
        const std::string_view typed = taken(sValor);
        std::string identifier(typed);
        const bool accepted = component.FnVerificarCif(identifier, bDatos);
        if (identifier.size() > typed.size()) refuse(FENDA_OTHER, "La forma normal es más larga que el texto.");
        std::memcpy(sValor, identifier.c_str(), identifier.size() + 1);
        verdict = accepted;
    });
}
