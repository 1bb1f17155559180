#include "taxid/ClavesRetencion.h"

#include <algorithm>
#include <array>
#include <span>

namespace FendaMaestros {

namespace {

constexpr std::int16_t firstYear = 2008;
constexpr std::int16_t lastYear = 2012;
constexpr const char* noKey = "  - Sin clave";
constexpr const char* anyKey = "  - Todos";

constexpr std::array keys{
    "A - Empleados por cuenta ajena",
    "B - Pensionistas y perceptores de haberes pasivos",
    "C - Prestaciones o subsidio de desempleo (excepto la modalidad de pago unico)",
    "D - Prestaciones por desempleo abonadas en la modalidad de pago unico.",
    "E - Consejeros y Administradores",
    "F - Cursos, conferencias, seminarios, elaboración de obras literarias",
    "G - Actividades profesionales",
    "H - Act. agricolas, ganaderas, forestales y autónomos en Estimación Objetiva",
    "I - Rendimientos a los que se refiere art 75.2 letra b)",
    "J - Imputación de rentas por cesión de derechos de imagen del art. 76.9",
    "K - Premios por la participación en juegos, concursos, etc (con/sin retencion)",
    "L - Rentas exentas y dietas exceptuadas de gravamen",
    "M - Premios por la participación en juegos, concursos, etc (con/sin retencion)",
};

constexpr std::array subKeysB{
    "01 - Pensiones y haberes pasivos de la Seg.Social y clases pasivas con excepción de la subclave 03",
    "02 - Pensiones y haberes pasivos distintas a la subclave 01 y 03",
    "03 - Percepciones en las que la retención se haya determinado con el procedimiento especial art. 89 A",
};
constexpr std::array subKeysF{
    "01 - Premios literarios, científicos o artísticos NO exentos de IRPF",
    "02 - Percepciones distintas a la subclave 01",
};
constexpr std::array subKeysG{
    "01 - Percepciones a las que resulte aplicable el tipo de retención con carácter general en el artículo 95.1 del "
    "Reglamento del Impuesto.",
    "02 - Percepciones a las que resulte aplicable el tipo de retención específico establecido en el art. 95.1",
    "03 - Percepciones a las que resulte aplicable el tipo de retención reducido establecido en el art. 95.1",
};
constexpr std::array subKeysH{
    "01 - Actividades agricolas",
    "02 - Actividades forestales",
    "03 - Rendimientos de actividades forestales",
    "04 - Estimación objetiva",
};
constexpr std::array subKeysI{
    "01 - Percepciones procedentes cesión del derecho a la explot. del derecho de imagen",
    "02 - Percepciones restantes rendimientos incluidos en el articulo 73.2, letra b",
};
constexpr std::array subKeysK{
    "01 - Premios por la participación en juegos, concursos, rifas o combinaciones aleatorias",
    "02 - Ganancias patrimoniales procedentes del aprovechamiento forestal de montes públicos",
};
constexpr std::array subKeysL{
    "01 - Dietas y asignaciones para gastos de viaje exentos de gravamen",
    "02 - Prestaciones públicas por actos de terrorismo",
    "03 - Ayudas percibidas por los afectados por el virus de inmunodeficiencia humana",
    "04 - Pensiones por lesiones o mutilaciones de la guerra civil",
    "05 - Indenmizaciones por despido o cese del trabajador, que estan exentas",
    "06 - Prestaciones por incapacidad permanente absoluta o gran invalidez, que esten exentas",
    "07 - Pensiones por inutilidad o incapacidad permanente del régimen de clases pasivas",
    "08 - Prestaciones, pensiones y haberes pasivos que esten exentos",
    "09 - Cantidades percibidas con motivo del acogimiento de personas con minusvalia",
    "10 - Becas que esten exentas",
    "11 - Premios literarios, artísticos o científicos, que esten exentos",
    "12 - Ayudas económicas a los deportistas de alto nivel, que este exentas",
    "13 - Prestaciones por desempleo abonadas en la modalidad de pago único, que esten exentas",
    "14 - Gratific. satisfechas por el Estado por la participación en misiones de paz o humanitarias, que esten "
    "exentas",
    "15 - Rendimientos del Trabajo percibidos por trabajos realizados en el extranjero, que esten exentos",
    "16 - Prestaciones por entierro o sepelio, que esten exentas",
    "17 - Ayudas a personas con hepatitis C contagiadas en el sistema sanitario público, que esten exentas",
    "18 - Prestaciones obtenidas por personas discapacitadas aportadas por sistemas de previsión social que esten "
    "exentas",
    "19 - Prestaciones públicas vinculadas al servicio para cuidados del entorno familiar y asistencia que esten "
    "exentas",
    "20 - Otras rentas exentas. Las que deniendose relacionar en el 190 no estén incluidas en ninguna otro supuesto",
};

struct SubKeys {
    std::string_view key;
    std::span<const char* const> items;
};

constexpr std::array allSubKeys{
    SubKeys{"B", subKeysB}, SubKeys{"F", subKeysF}, SubKeys{"G", subKeysG}, SubKeys{"H", subKeysH},
    SubKeys{"I", subKeysI}, SubKeys{"K", subKeysK}, SubKeys{"L", subKeysL},
};

void addAll(ComboBox& combo, std::span<const char* const> items) {
    for (const char* item : items) combo.AddItem(item);
}

void fill(ComboBox& combo, std::string_view key, std::int16_t year, bool filter) {
    if (year < firstYear || year > lastYear) return combo.AddItem(noKey);
    if (key == "-") {
        combo.AddItem(filter ? anyKey : noKey);
        return addAll(combo, keys);
    }
    const auto found = std::ranges::find(allSubKeys, key, &SubKeys::key);
    if (found != allSubKeys.end()) addAll(combo, found->items);
}

}  // namespace

void jCargaClavesRetencion(ComboBox& oCb, std::string_view s, std::int16_t n, bool bConsulta) {
    oCb.Enabled = true;
    oCb.Clear();
    fill(oCb, s, n, bConsulta);
    if (oCb.ListCount() > 0)
        oCb.setListIndex(0);
    else
        oCb.Enabled = false;
}

}  // namespace FendaMaestros
