#include <gtest/gtest.h>

#include "taxid/ClavesRetencion.h"

namespace FendaMaestros::testing {
namespace {

TEST(WithholdingKeys, FillTheListOfTheirYear) {
    struct {
        const char* rule;
        const char* key;
        std::int16_t year;
        bool filter;
        int count;
        const char* first;
        const char* last;
    } rows[] = {
        {"before the first year", "-", 2007, true, 1, "  - Sin clave", "  - Sin clave"},
        {"first year", "-", 2008, false, 14, "  - Sin clave",
         "M - Premios por la participación en juegos, concursos, etc (con/sin retencion)"},
        {"last year, as a filter", "-", 2012, true, 14, "  - Todos",
         "M - Premios por la participación en juegos, concursos, etc (con/sin retencion)"},
        {"after the last year", "-", 2013, false, 1, "  - Sin clave", "  - Sin clave"},
        {"sub-keys after the last year", "L", 2013, false, 1, "  - Sin clave", "  - Sin clave"},
        {"twenty sub-keys", "L", 2010, false, 20, "01 - Dietas y asignaciones para gastos de viaje exentos de gravamen",
         "20 - Otras rentas exentas. Las que deniendose relacionar en el 190 no estén incluidas en ninguna otro "
         "supuesto"},
        {"four sub-keys", "H", 2010, true, 4, "01 - Actividades agricolas", "04 - Estimación objetiva"},
        {"a key without any", "A", 2010, false, 0, "", ""},
        {"an unknown key", "Z", 2010, false, 0, "", ""},
        {"no key", "", 2010, false, 0, "", ""},
        {"the code of no key", " ", 2010, false, 0, "", ""},
    };
    for (const auto& row : rows) {
        ComboBox combo;
        combo.Enabled = false;
        combo.AddItem("old");
        int clicks = 0;
        combo.Click = [&clicks] { ++clicks; };
        jCargaClavesRetencion(combo, row.key, row.year, row.filter);
        EXPECT_EQ(combo.ListCount(), row.count) << row.rule;
        EXPECT_EQ(combo.Enabled, row.count > 0) << row.rule;
        EXPECT_EQ(combo.ListIndex(), row.count > 0 ? 0 : -1) << row.rule;
        EXPECT_EQ(combo.Text(), row.first) << row.rule;
        EXPECT_EQ(clicks, row.count > 0 ? 1 : 0) << row.rule;
        const std::string last = combo.ListCount() > 0 ? combo.List(combo.ListCount() - 1) : "";
        EXPECT_EQ(last, row.last) << row.rule;
    }
}

}  // namespace
}  // namespace FendaMaestros::testing
