"""Whole-drawing comparison: layouts and blocks, tables, groups."""
import dxfcompare
import dxfload
from dxfcompare import Context

# R12 names its two layout blocks differently; the saved file is never R12.
_LAYOUT_BLOCK_ALIASES = {"$model_space": "*model_space", "$paper_space": "*paper_space"}


def container_key(name: str) -> str:
    key = (name or "").lower()
    return _LAYOUT_BLOCK_ALIASES.get(key, key)


def _containers(doc, names_in_file) -> dict:
    """Blocks by key, leaving out those ezdxf made up while loading (the
    layout blocks always count: R12 keeps their entities outside BLOCKS)."""
    keep = None if names_in_file is None else {container_key(n) for n in names_in_file}
    out = {}
    for block in doc.blocks:
        key = container_key(block.name)
        if keep is None or key in keep or key in _LAYOUT_BLOCK_ALIASES.values():
            out.setdefault(key, block)
    return out


def compare_containers(orig_doc, saved_doc, ctx: Context, orig_names=None, saved_names=None):
    saved = _containers(saved_doc, saved_names)
    originals = _containers(orig_doc, orig_names)
    for key, block in originals.items():
        if ctx.diffs.full:
            return
        other = saved.get(key)
        entities = list(block)
        if other is None:
            if entities or key not in _LAYOUT_BLOCK_ALIASES.values():
                ctx.diffs.add(f"block {block.name!r} missing in saved file")
            continue
        # A layout block the original file did not hold is ezdxf's own; its BLOCK entity says
        # nothing about what the file held.
        in_file = orig_names is None or key in {container_key(n) for n in orig_names}
        if in_file and block.block is not None and other.block is not None:
            # layout blocks are spelled in several ways, all meaning the same
            layout = key in _LAYOUT_BLOCK_ALIASES.values()
            dxfcompare.compare_attribs(block.block, other.block, ctx, f"BLOCK {block.name!r}",
                                       skip_handles=True, ignore=("name",) if layout else ())
        if ctx.by_handle:
            _match_by_handle(entities, list(other), ctx, block.name)
        else:
            _match_by_order(entities, list(other), ctx, block.name)
    for key, block in saved.items():
        if key not in originals and len(block):
            ctx.diffs.add(f"block {block.name!r} with {len(block)} entities only in saved file")


def _match_by_order(orig, saved, ctx: Context, name: str):
    if len(orig) != len(saved):
        ctx.diffs.add(f"{name}: {len(orig)} entities in original, {len(saved)} in saved file")
    for i, (a, b) in enumerate(zip(orig, saved)):
        if ctx.diffs.full:
            return
        dxfcompare.compare_entities(a, b, ctx, f"{name}: {a.dxftype()}[{i}]")


def _match_by_handle(orig, saved, ctx: Context, name: str):
    by_handle = {e.dxf.handle.upper(): e for e in saved}
    common = []
    for a in orig:
        if ctx.diffs.full:
            return
        handle = a.dxf.handle.upper()
        b = by_handle.pop(handle, None)
        if b is None:
            ctx.diffs.add(f"{name}: {a.dxftype()} #{handle} missing in saved file")
            continue
        common.append(handle)
        dxfcompare.compare_entities(a, b, ctx, f"{name}: {a.dxftype()} #{handle}")
    for handle, b in by_handle.items():
        ctx.diffs.add(f"{name}: {b.dxftype()} #{handle} only in saved file")
    kept = set(common)
    saved_order = [h for h in (e.dxf.handle.upper() for e in saved) if h in kept]
    if saved_order != common:
        at = next(i for i, (x, y) in enumerate(zip(common, saved_order)) if x != y)
        ctx.diffs.add(f"{name}: entity order differs at #{common[at]}"
                      f" (saved has #{saved_order[at]})")


def compare_tables(orig_doc, saved_doc, ctx: Context):
    for table in ("layers", "linetypes", "styles"):
        saved_table = {}
        for entry in getattr(saved_doc, table):
            saved_table.setdefault(_table_key(entry), entry)
        for entry in getattr(orig_doc, table):
            name = dxfcompare.dxffacts.text(entry.dxf.get("name", ""))
            renamed = table == "layers" and name in ctx.layer_map
            name = ctx.layer_map.get(name, name) if renamed else name
            if not name or name.lower() not in saved_table:
                valid = table != "layers" or dxfcompare.validator.is_valid_layer_name(name)
                if name and valid:
                    ctx.diffs.add(f"{table}: {name!r} missing in saved file")
                continue
            other = saved_table[name.lower()]
            where = f"{table} {name!r}"
            # Standard entries the file did not define are ezdxf's own on one side and qvad's on
            # the other; only what the file held is content.
            standard = name.lower() in ("continuous", "byblock", "bylayer", "standard")
            if ctx.recovered and standard:
                continue
            ignore = ("name",) if renamed else ()
            if standard:
                # ezdxf gives the standard linetypes it adds an empty description, qvad a real one.
                ignore += ("description",)
            dxfcompare.compare_attribs(entry, other, ctx, where, skip_handles=True, ignore=ignore)
            if table == "linetypes":
                _compare_pattern(entry, other, ctx, where)


def _table_key(entry) -> str:
    # Table names are case-insensitive and may be written with \\U+ escapes.
    return dxfcompare.dxffacts.text(entry.dxf.get("name", "")).lower()


def _compare_pattern(orig, saved, ctx: Context, where: str):
    # R12 keeps only the total length (40) and the dash lengths (49); the
    # shape and text details of complex linetypes exist from R13 on.
    codes = (40, 49)
    if orig.doc.dxfversion > "AC1009" and saved.doc.dxfversion > "AC1009":
        codes = (3, 9, 40, 44, 45, 46, 49, 50, 74, 75)

    def tags(linetype):
        return [(t.code, t.value) for t in linetype.pattern_tags.tags if t.code in codes]
    found = dxfcompare.first_difference(tags(orig), tags(saved), "pattern")
    if found:
        ctx.diffs.add(f"{where}: {found}")


def compare_groups(orig_doc, saved_doc, ctx: Context):
    def groups(doc):
        try:
            # ezdxf does not keep the members' order stable between loads
            return {name: sorted(e.dxf.handle.upper() if ctx.by_handle else e.dxftype()
                                 for e in group) for name, group in doc.groups}
        except Exception:  # R12 has no groups; broken links are an audit matter
            return {}
    found = dxfcompare.first_difference(groups(orig_doc), groups(saved_doc), "groups")
    if found:
        ctx.diffs.add(found)


def compare_docs(orig_doc, saved_doc, by_handle: bool, limit=20,
                 orig_blocks=None, saved_blocks=None, recovered=False) -> list:
    """orig_blocks, saved_blocks: block names found in each file, if known."""
    ctx = Context(by_handle, limit, recovered)
    compare_containers(orig_doc, saved_doc, ctx, orig_blocks, saved_blocks)
    compare_tables(orig_doc, saved_doc, ctx)
    compare_groups(orig_doc, saved_doc, ctx)
    return ctx.diffs.items


def _doc_keeps_file_handles(doc, raw) -> bool:
    handles = getattr(raw, "entity_handles", None)
    if handles is None:
        return True
    loaded = {e.dxf.handle.upper() for e in doc.entitydb.values() if e.dxf.hasattr("handle")}
    return all(h.upper() in loaded for h in handles)


def compare_files(orig_path, saved_path, limit=20, original=None, saved_doc=None):
    """Differences as text lines, and the original as ezdxf loaded it.

    No lines means the same drawing, or an original ezdxf cannot read, which
    then has nothing to compare against (see original.how).
    """
    original = original or dxfload.load_original(orig_path)
    if original.doc is None:
        return [], original
    if saved_doc is None:
        try:
            saved_doc = dxfload.load_plain(saved_path)
        except Exception as error:
            return [f"saved file does not load: {dxfload.describe(error)}"], original
    raw = dxfload.scan_raw(orig_path)
    # Handles count only where ezdxf kept the file's own: some R12 writers put them where ezdxf's
    # R12 reader does not look, and it makes up new ones.
    by_handle = original.how == "plain" and raw.handles_reliable and _doc_keeps_file_handles(original.doc, raw)
    diffs = compare_docs(original.doc, saved_doc, by_handle, limit,
                         raw.block_names, dxfload.scan_raw(saved_path).block_names,
                         recovered=original.how != "plain")
    return diffs, original
