// Sorts and filters the table, opens details, and lights up shapes. The page can be read without it.
// It reads data- attributes and writes text and classes, never markup.
(() => {
    'use strict';
    const d = document,
        $ = (s, r = d) => r.querySelector(s),
        $$ = (s, r = d) => [...r.querySelectorAll(s)],
        root = d.documentElement;
    root.classList.add('js');
    const tab = $('#nets'),
        nets = $$('tbody.net'),
        q = $('#q'),
        form = $('.filter'),
        count = $('#count'),
        empty = $('#empty'),
        srt = $('#srt');
    // theme: system, light, dark; kept for this visit only
    const th = $('#theme'),
        T = ['system', 'light', 'dark'];
    let ti = 0;
    th.addEventListener('click', () => {
        ti = (ti + 1) % 3;
        if (ti) root.dataset.theme = T[ti];
        else delete root.dataset.theme;
        th.textContent = 'Colours: ' + T[ti];
        th.setAttribute('aria-label', 'Colours: ' + (ti ? T[ti] : 'as the system'));
    });
    // a page without networks has no more to do
    if (!tab) return;
    const everything = count.textContent;
    // sort
    const ths = [...tab.tHead.rows[0].cells],
        text = new Set(['name', 'maker']);
    function sort(i, dir) {
        const k = ths[i].dataset.k,
            txt = text.has(k);
        const value = (n) => {
            const v = n.rows[0].cells[i].dataset.v;
            const number = parseFloat(v);
            return txt ? v || null : Number.isNaN(number) ? null : number;
        };
        // What is not told stands last, whichever way the rest is sorted.
        const list = nets.map((n, j) => [value(n), j, n]);
        list.sort(([a, j], [b, k]) => {
            if (a === null || b === null) return (a === null) - (b === null) || j - k;
            return (a < b ? -1 : a > b ? 1 : 0) * dir || j - k;
        });
        tab.append(...list.map((x) => x[2]));
        ths.forEach((h, j) => {
            if (j === i) h.setAttribute('aria-sort', dir > 0 ? 'ascending' : 'descending');
            else h.removeAttribute('aria-sort');
        });
        srt.value = i + (dir > 0 ? 'a' : 'd');
    }
    ths.forEach((h, i) => {
        const s = $('.hd', h),
            b = d.createElement('button');
        b.type = 'button';
        b.append(...s.childNodes);
        s.replaceWith(b);
        const k = h.dataset.k,
            first = text.has(k) || k === 'ch' || k === 'sec' || k === 'pmf' ? 1 : -1;
        b.addEventListener('click', () => {
            const c = h.getAttribute('aria-sort');
            sort(i, c === 'ascending' ? -1 : c === 'descending' ? 1 : first);
        });
        const name = b.firstChild.textContent.trim();
        for (const [c, l] of first > 0
            ? [
                  ['a', ' \u25b2'],
                  ['d', ' \u25bc'],
              ]
            : [
                  ['d', ' \u25bc'],
                  ['a', ' \u25b2'],
              ]) {
            const o = d.createElement('option');
            o.value = i + c;
            o.textContent = name + l;
            srt.append(o);
        }
    });
    srt.value = '1d';
    srt.addEventListener('change', () =>
        sort(parseInt(srt.value, 10), srt.value.endsWith('a') ? 1 : -1),
    );
    // filter: table and charts together
    const texts = new Map(nets.map((n) => [n, n.dataset.t.toLowerCase()]));
    const marks = $$('[data-n]').map((m) => [m, m.dataset.n.split(' ')]);
    function filter() {
        const w = q.value.toLowerCase().split(/\s+/).filter(Boolean),
            b = new Set($$('input[name=b]:checked').map((x) => x.value)),
            own = $('#fo')?.checked,
            ff = $('#ff').checked;
        const on = new Set();
        for (const n of nets) {
            const s = n.dataset,
                t = texts.get(n),
                ok =
                    (b.has(s.b) || !s.b) &&
                    (!own || s.o === '1') &&
                    (!ff || s.f !== '0') &&
                    w.every((x) =>
                        x[0] === '-' && x.length > 1 ? !t.includes(x.slice(1)) : t.includes(x),
                    );
            n.hidden = !ok;
            if (ok) on.add(n.id);
        }
        // What the table does not hold fades with the first that is filtered out.
        const all = on.size === nets.length;
        for (const [m, ids] of marks) {
            const off = !all && !ids.some((i) => on.has(i));
            m.classList.toggle('off', off);
            if (m.classList.contains('mult')) m.hidden = off;
        }
        count.textContent =
            all ? everything : on.size + ' of ' + everything;
        empty.hidden = on.size > 0;
        tab.hidden = on.size === 0;
    }
    form.addEventListener('input', filter);
    form.addEventListener('submit', (e) => e.preventDefault());
    form.addEventListener('reset', () => {
        requestAnimationFrame(() => {
            filter();
            srt.value = '1d';
            sort(1, -1);
        });
    });
    $('#again').addEventListener('click', () => {
        form.reset();
        q.focus();
    });
    d.addEventListener('keydown', (e) => {
        if (e.key === '/' && !/^(INPUT|SELECT|TEXTAREA)$/.test(d.activeElement.tagName)) {
            e.preventDefault();
            q.focus();
            q.select();
        }
        if (e.key === 'Escape' && d.activeElement === q && q.value) {
            q.value = '';
            filter();
        }
    });
    // details
    function set(n, open) {
        n.classList.toggle('x', open);
        n.classList.toggle('shut', !open);
        $('.open', n).setAttribute('aria-expanded', open ? 'true' : 'false');
    }
    for (const n of nets) {
        const a = $('.open', n);
        a.setAttribute('aria-expanded', 'false');
        a.addEventListener('click', (e) => {
            e.preventDefault();
            const o = !n.classList.contains('x');
            set(n, o);
            history.replaceState(null, '', o ? '#' + n.id : location.pathname + location.search);
        });
    }
    function go(id) {
        const n = d.getElementById(id);
        if (!n || !n.classList.contains('net')) return false;
        if (n.hidden) {
            form.reset();
            $$('input[name=b]').forEach((x) => (x.checked = true));
            filter();
        }
        set(n, true);
        n.scrollIntoView({ block: 'center' });
        $('.open', n).focus({ preventScroll: true });
        return true;
    }
    d.addEventListener('click', (e) => {
        const a = e.target.closest('a[href^="#n-"]');
        if (!a || a.classList.contains('open')) return;
        const id = a.getAttribute('href').slice(1);
        if (go(id)) {
            e.preventDefault();
            history.replaceState(null, '', '#' + id);
        }
    });
    if (location.hash.startsWith('#n-')) go(location.hash.slice(1));
    // pointing at a row lights its shapes, and those of the other links of its device
    const shapes = new Map(),
        links = new Map();
    const put = (map, key, value) => map.set(key, [...(map.get(key) || []), value]);
    for (const [m, ids] of marks)
        if (m.classList.contains('sh')) for (const i of ids) put(shapes, i, m);
    for (const n of nets) if (n.dataset.m) put(links, n.dataset.m, n);
    let lit = [],
        last = null;
    tab.addEventListener('pointerover', (e) => {
        const n = e.target.closest('tbody.net');
        if (n === last) return;
        last = n;
        lit.forEach((m) => m.classList.remove('hi'));
        const group = n ? links.get(n.dataset.m) || [n] : [];
        lit = group.flatMap((x) => shapes.get(x.id) || []);
        lit.forEach((m) => m.classList.add('hi'));
    });
    const fh = () =>
        root.style.setProperty(
            '--fh',
            getComputedStyle(form).position === 'sticky' ? form.offsetHeight + 'px' : '0px',
        );
    fh();
    addEventListener('resize', fh);
    let shut = [];
    addEventListener('beforeprint', () => {
        shut = $$('.finds details:not([open])');
        shut.forEach((x) => {
            x.open = true;
        });
    });
    addEventListener('afterprint', () => {
        shut.forEach((x) => {
            x.open = false;
        });
    });
})();
