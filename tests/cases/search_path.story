# Names that another user has made do not get in between: not the twins of everything that queries
# call, in a schema in front of the server's own, and not a better match for a call.
databases postgresql
sql
  DO $$ BEGIN CREATE ROLE plain_user; EXCEPTION WHEN duplicate_object THEN NULL; END $$;
  CREATE SCHEMA trap AUTHORIZATION plain_user;
  GRANT CREATE ON SCHEMA public TO plain_user;
  SET ROLE plain_user;
  CREATE FUNCTION public.format(text, name, name) RETURNS text LANGUAGE sql AS 'SELECT ''public.other''::text';
  CREATE FUNCTION trap.spring() RETURNS text LANGUAGE plpgsql VOLATILE AS 'BEGIN RAISE ''the trap was sprung''; END';
  DO $$
  DECLARE each record;
  BEGIN
    FOR each IN SELECT p.proname AS name, oidvectortypes(p.proargtypes) AS types, format_type(p.prorettype, NULL) AS result
      FROM pg_proc p JOIN pg_type r ON r.oid = p.prorettype WHERE p.pronamespace = 'pg_catalog'::regnamespace
      AND p.prokind = 'f' AND r.typtype = 'b' AND NOT p.proretset
      AND NOT EXISTS (SELECT FROM pg_type t WHERE t.typtype = 'p' AND t.oid = ANY (p.proargtypes))
    LOOP
      EXECUTE format('CREATE FUNCTION trap.%I(%s) RETURNS %s LANGUAGE plpgsql AS ''BEGIN RAISE ''''the trap was sprung''''; END''',
        each.name, each.types, each.result);
    END LOOP;
    FOR each IN SELECT o.oprname AS name, oprcode::regproc AS code, format_type(oprleft, NULL) AS l, format_type(oprright, NULL) AS r
      FROM pg_operator o WHERE oprleft <> 0 AND EXISTS (SELECT FROM pg_proc p WHERE p.pronamespace = 'trap'::regnamespace
      AND p.proname = o.oprcode::text AND p.proargtypes[0] = o.oprleft AND p.proargtypes[1] = o.oprright)
    LOOP
      EXECUTE format('CREATE OPERATOR trap.%s (FUNCTION = trap.%I, LEFTARG = %s, RIGHTARG = %s)', each.name, each.code, each.l, each.r);
    END LOOP;
    FOR each IN SELECT relname AS name FROM pg_class WHERE relnamespace = 'pg_catalog'::regnamespace AND relkind IN ('r', 'v')
    LOOP
      EXECUTE format('CREATE TABLE trap.%I (trapped integer)', each.name);
    END LOOP;
    FOR each IN SELECT unnest('{oid,text,name,int4,int8,regclass,regnamespace}'::text[]) AS name
    LOOP
      EXECUTE format('CREATE DOMAIN trap.%I AS pg_catalog.bool', each.name);
    END LOOP;
  END $$;
  RESET ROLE;
  CREATE SCHEMA "My Shop";
  CREATE TYPE "My Shop".mood AS ENUM ('low', 'high');
  CREATE TABLE "My Shop".parents (k char(3) PRIMARY KEY, on_sale boolean UNIQUE, sold integer);
  INSERT INTO "My Shop".parents VALUES ('a', true, 0);
  CREATE TABLE public.other (id integer, k char(3), code text, on_sale boolean, m integer);
  CREATE TABLE "My Shop".goods (id integer PRIMARY KEY, k char(3) REFERENCES "My Shop".parents, code text UNIQUE,
    on_sale boolean REFERENCES "My Shop".parents (on_sale), m "My Shop".mood NOT NULL, CHECK (id > 0));
  CREATE FUNCTION "My Shop".count_goods() RETURNS trigger LANGUAGE plpgsql AS
    'BEGIN UPDATE parents SET sold = sold OPERATOR(pg_catalog.+) 1; RETURN NEW; END';
  CREATE TRIGGER counting BEFORE INSERT ON "My Shop".goods FOR EACH ROW EXECUTE FUNCTION "My Shop".count_goods();
  DO $$ BEGIN EXECUTE format('ALTER DATABASE %I SET search_path = trap, "My Shop", public, pg_catalog', current_database()); END $$;
> import "<target>" goods -o goods.toml --records 3
  5 items: goods.toml
> load goods.toml "<target>" goods
  3 records, <t> s: goods
query SELECT id, k, code, on_sale, m FROM goods
  1|a  |AAAAA|t|low
  2|a  |AAAAB|t|high
  3|a  |AAAAC|t|low
query SELECT sold FROM parents
  3
