#include "platform/postgres/Preparation.h"

namespace FendaMaestros::postgres {

namespace {

constexpr const char* roles = R"sql(
SET search_path = pg_catalog;

DO $$
DECLARE
    role_name text;
BEGIN
    IF current_setting('server_version_num')::int < 140000 OR current_setting('server_encoding') <> 'UTF8' THEN
        RAISE EXCEPTION 'hace falta PostgreSQL 14 o posterior y una base de datos con codificación UTF8';
    END IF;
    FOREACH role_name IN ARRAY ARRAY['fenda_puesto', 'fenda_gestor'] LOOP
        IF NOT EXISTS (SELECT FROM pg_roles WHERE rolname = role_name) THEN
            EXECUTE format('CREATE ROLE %I NOLOGIN', role_name);
        END IF;
    END LOOP;
    EXECUTE format('GRANT CREATE ON DATABASE %I TO fenda_gestor', current_database());
END $$;
GRANT fenda_puesto TO fenda_gestor;
GRANT fenda_gestor TO CURRENT_USER;

CREATE SCHEMA IF NOT EXISTS fenda;
CREATE SCHEMA IF NOT EXISTS kxcomun AUTHORIZATION fenda_gestor;
GRANT USAGE ON SCHEMA fenda, kxcomun TO fenda_puesto;
)sql";

/// Texts compare as in Spanish: case does not count, accents do; blanks at the end do not count either in a bpchar.
/// Patterns need an order of their own, since the engine looks for none in one that makes different texts equal.
constexpr const char* texts = R"sql(
CREATE COLLATION IF NOT EXISTS fenda.es (provider = icu, locale = 'es-u-ks-level2', deterministic = false);
CREATE COLLATION IF NOT EXISTS fenda.letters (provider = icu, locale = 'es');

-- The texts with the blanks at their end, which a cast takes away.
CREATE OR REPLACE FUNCTION fenda.whole(bpchar) RETURNS text
    LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN textin(bpcharout($1));
CREATE OR REPLACE FUNCTION fenda.joined(bpchar, bpchar) RETURNS bpchar
    LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN (fenda.whole($1) || fenda.whole($2))::bpchar;
CREATE OR REPLACE FUNCTION fenda.joined(bpchar, text) RETURNS bpchar
    LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN (fenda.whole($1) || $2)::bpchar;
CREATE OR REPLACE FUNCTION fenda.joined(text, bpchar) RETURNS bpchar
    LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN ($1 || fenda.whole($2))::bpchar;
CREATE OR REPLACE FUNCTION fenda.joined(text, text) RETURNS bpchar
    LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN ($1 || $2)::bpchar;

-- Each letter and its accents in one character.
CREATE OR REPLACE FUNCTION fenda.composed(text) RETURNS text
    LANGUAGE sql IMMUTABLE PARALLEL SAFE
    RETURN CASE WHEN octet_length($1) = length($1) THEN $1 ELSE normalize($1) END;
CREATE OR REPLACE FUNCTION fenda.matches(bpchar, bpchar) RETURNS boolean
    LANGUAGE sql IMMUTABLE PARALLEL SAFE
    RETURN fenda.composed(fenda.whole($1)) COLLATE fenda.letters
        ILIKE fenda.composed(fenda.whole($2)) COLLATE fenda.letters ESCAPE '';
CREATE OR REPLACE FUNCTION fenda.differs(bpchar, bpchar) RETURNS boolean
    LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN NOT fenda.matches($1, $2);

DO $$
DECLARE
    missing record;
BEGIN
    FOR missing IN
        SELECT * FROM (VALUES
            ('<+>', 'joined', 'bpchar', 'bpchar'), ('<+>', 'joined', 'bpchar', 'text'),
            ('<+>', 'joined', 'text', 'bpchar'), ('<+>', 'joined', 'text', 'text'),
            ('~~', 'matches', 'bpchar', 'bpchar'), ('!~~', 'differs', 'bpchar', 'bpchar')
        ) AS wanted (sign, called, a, b)
        WHERE to_regoperator(format('fenda.%s(%s,%s)', sign, a, b)) IS NULL
    LOOP
        EXECUTE format('CREATE OPERATOR fenda.%s (FUNCTION = fenda.%s, LEFTARG = %s, RIGHTARG = %s)',
                       missing.sign, missing.called, missing.a, missing.b);
    END LOOP;
END $$;
)sql";

/// Those of the screens' language that the engine lacks, or has for other types.
constexpr const char* functions = R"sql(
CREATE OR REPLACE FUNCTION fenda.len(bpchar) RETURNS bigint
    LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN length($1);
CREATE OR REPLACE FUNCTION fenda.year(bpchar) RETURNS bigint
    LANGUAGE sql IMMUTABLE PARALLEL SAFE
    RETURN CASE WHEN octet_length($1) >= 8
        THEN substring($1 COLLATE "C" FROM '^(?:[0-9]{1,2}/[0-9]{1,2}/)?([0-9]{4})')::bigint END;
CREATE OR REPLACE FUNCTION fenda.substring(bpchar, bigint, bigint) RETURNS bpchar
    LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN substr(fenda.whole($1), $2::int, $3::int)::bpchar;
CREATE OR REPLACE FUNCTION fenda.substr(bpchar, bigint, bigint) RETURNS bpchar
    LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN substr(fenda.whole($1), $2::int, $3::int)::bpchar;
CREATE OR REPLACE FUNCTION fenda.substr(bpchar, bigint) RETURNS bpchar
    LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN substr(fenda.whole($1), $2::int)::bpchar;
CREATE OR REPLACE FUNCTION fenda.ltrim(bpchar) RETURNS bpchar
    LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN ltrim(fenda.whole($1))::bpchar;
CREATE OR REPLACE FUNCTION fenda.rtrim(bpchar) RETURNS bpchar
    LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN $1::text::bpchar;
CREATE OR REPLACE FUNCTION fenda.upper(bpchar) RETURNS bpchar
    LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN upper(fenda.whole($1) COLLATE fenda.letters)::bpchar;
CREATE OR REPLACE FUNCTION fenda.lower(bpchar) RETURNS bpchar
    LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN lower(fenda.whole($1) COLLATE fenda.letters)::bpchar;
CREATE OR REPLACE FUNCTION fenda.replace(bpchar, bpchar, bpchar) RETURNS bpchar
    LANGUAGE sql IMMUTABLE PARALLEL SAFE
    RETURN replace(fenda.whole($1) COLLATE "C", fenda.whole($2) COLLATE "C", fenda.whole($3) COLLATE "C")::bpchar;
CREATE OR REPLACE FUNCTION fenda.round(numeric, bigint) RETURNS numeric
    LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN round($1, $2::int);
)sql";

/// A company is the schema empresa_N by its number; the shared data, once they are there, have a row of their own.
constexpr const char* companies = R"sql(
CREATE TABLE IF NOT EXISTS fenda.empresas (
    numero bigint GENERATED ALWAYS AS IDENTITY PRIMARY KEY,
    nombre bpchar COLLATE fenda.es NOT NULL UNIQUE,
    version bigint NOT NULL
);
CREATE TABLE IF NOT EXISTS fenda.comun (version bigint NOT NULL);

-- What is kept leaves its mark, by which a clerk finds out about a commit whose answer was lost. The number of the
-- transaction is not enough: after a crash the server may give it once more.
CREATE TABLE IF NOT EXISTS fenda.marcas (
    marca uuid PRIMARY KEY,
    momento timestamptz NOT NULL DEFAULT now()
);
GRANT SELECT, INSERT, DELETE ON fenda.marcas TO fenda_puesto;
GRANT SELECT ON fenda.empresas, fenda.comun TO fenda_puesto;
GRANT INSERT, UPDATE, DELETE ON fenda.empresas, fenda.comun TO fenda_gestor;
)sql";

/// A newer version of the library that orders the texts may order them otherwise: every index is made anew.
constexpr const char* order = R"sql(
DO $$
DECLARE
    collation_name text;
    ordered regclass;
BEGIN
    FOREACH collation_name IN ARRAY ARRAY['fenda.es', 'fenda.letters'] LOOP
        IF (SELECT collversion IS DISTINCT FROM pg_collation_actual_version(oid)
            FROM pg_collation WHERE oid = collation_name::regcollation) THEN
            FOR ordered IN
                SELECT c.oid FROM pg_class c JOIN pg_namespace n ON n.oid = c.relnamespace
                WHERE c.relkind = 'r' AND (n.nspname IN ('fenda', 'kxcomun') OR n.nspname ~ '^empresa_[0-9]+$')
            LOOP
                EXECUTE format('REINDEX TABLE %s', ordered);
            END LOOP;
            EXECUTE format('ALTER COLLATION %s REFRESH VERSION', collation_name);
        END IF;
    END LOOP;
END $$;
)sql";

}  // namespace

std::string preparation() {
    std::string sql;
    for (const char* part : {roles, texts, functions, companies, order}) sql += part;
    return sql + "\nCOMMENT ON SCHEMA fenda IS 'preparación " + std::to_string(preparationVersion) + "';\n";
}

}  // namespace FendaMaestros::postgres
