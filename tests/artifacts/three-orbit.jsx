import { useEffect, useRef } from "react";
import * as THREE from "three";
import { OrbitControls } from "three/examples/jsm/controls/OrbitControls";

export default function Scene() {
  const ref = useRef();
  useEffect(() => {
    const scene = new THREE.Scene();
    const geometry = new THREE.TorusKnotGeometry(1, 0.3, 64, 8);
    scene.add(new THREE.Mesh(geometry, new THREE.MeshNormalMaterial()));
    const camera = new THREE.PerspectiveCamera(60, 1, 0.1, 100);
    camera.position.set(0, 0, 5);
    const vector = new THREE.Vector3(1, 2, 2);
    ref.current.dataset.length = String(vector.length());
    let renderer;
    try { renderer = new THREE.WebGLRenderer(); } catch { return; }
    renderer.setSize(300, 300);
    ref.current.appendChild(renderer.domElement);
    const controls = new OrbitControls(camera, renderer.domElement);
    controls.enableDamping = true;
    renderer.render(scene, camera);
    return () => { controls.dispose(); renderer.dispose(); };
  }, []);
  return <div ref={ref} className="m-4 h-[300px] w-[300px] bg-black" />;
}
